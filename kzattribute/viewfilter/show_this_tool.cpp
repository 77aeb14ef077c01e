#include "viewfilter/show_this_tool.h"

const AString AShowThisTool::className(_T("AShowThisTool"));

int AShowThisTool::onToolStart(const AFPoint&, void*) {
    notifyEnd(nullptr);
    return 1;
}
