// Shows everything but one colour.
#pragma once

#include "base/tool_pattern.h"

class AShowAllExceptTool : public TToolPattern<AShowAllExceptTool> {
public:
    static const AString className;
    static constexpr ToolConstants constants{IDS_SHOW_ALL_EXCEPT, IDS_TIP_SHOW_ALL_EXCEPT, ToolChanges::view};

    AShowAllExceptTool() { setUp(); }

    using ATool::onToolStart;
    int onToolStart(const AFPoint& point, void* data) override;
};
