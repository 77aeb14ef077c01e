#include "select/select_color_tool.h"

const AString ASelectColorTool::className(_T("ASelectColorTool"));

int ASelectColorTool::onToolStart() {
    notifyEnd(nullptr);
    return 1;
}
