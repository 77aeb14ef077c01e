#include "viewfilter/hide_all_except_tool.h"

const AString AHideAllExceptTool::className(_T("AHideAllExceptTool"));

int AHideAllExceptTool::onToolStart(const AFPoint&, void*) {
    notifyEnd(nullptr);
    return 1;
}
