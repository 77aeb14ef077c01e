#include "viewfilter/show_all_except_tool.h"

const AString AShowAllExceptTool::className(_T("AShowAllExceptTool"));

int AShowAllExceptTool::onToolStart(const AFPoint&, void*) {
    notifyEnd(nullptr);
    return 1;
}
