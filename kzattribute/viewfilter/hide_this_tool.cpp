#include "viewfilter/hide_this_tool.h"

const AString AHideThisTool::className(_T("AHideThisTool"));

int AHideThisTool::onToolStart(const AFPoint&, void*) {
    notifyEnd(nullptr);
    return 1;
}
