// Hides everything but one colour.
#pragma once

#include "base/tool_pattern.h"

class AHideAllExceptTool : public TToolPattern<AHideAllExceptTool> {
public:
    static const AString className;
    static constexpr ToolConstants constants{IDS_HIDE_ALL_EXCEPT, IDS_TIP_HIDE_ALL_EXCEPT, ToolChanges::view};

    AHideAllExceptTool() { setUp(); }

    using ATool::onToolStart;
    int onToolStart(const AFPoint& point, void* data) override;
};
