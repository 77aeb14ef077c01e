#include "viewfilter/show_all_tool.h"

const AString AShowAllTool::className(_T("AShowAllTool"));

int AShowAllTool::onToolStart() {
    notifyEnd(nullptr);
    return 1;
}
