#include "select/select_by_attr_tool.h"

const AString ASelectByAttrTool::className(_T("ASelectByAttrTool"));

int ASelectByAttrTool::onToolStart() {
    notifyEnd(nullptr);
    return 1;
}
