// Shows one colour.
#pragma once

#include "base/tool_pattern.h"

class AShowThisTool : public TToolPattern<AShowThisTool> {
public:
    static const AString className;
    static constexpr ToolConstants constants{IDS_SHOW_THIS, IDS_TIP_SHOW_THIS, ToolChanges::view};

    AShowThisTool() { setUp(); }

    using ATool::onToolStart;
    int onToolStart(const AFPoint& point, void* data) override;
};
