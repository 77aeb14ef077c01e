#include "viewfilter/view_filter_tool.h"

const AString AViewFilterTool::className(_T("AViewFilterTool"));

int AViewFilterTool::onToolStart() {
    notifyEnd(nullptr);
    return 1;
}
