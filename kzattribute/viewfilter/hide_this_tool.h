// Hides one colour.
#pragma once

#include "base/tool_pattern.h"

class AHideThisTool : public TToolPattern<AHideThisTool> {
public:
    static const AString className;
    static constexpr ToolConstants constants{IDS_HIDE_THIS, IDS_TIP_HIDE_THIS, ToolChanges::view};

    AHideThisTool() { setUp(); }

    using ATool::onToolStart;
    int onToolStart(const AFPoint& point, void* data) override;
};
