// Opens the View Filter dialog, in which the user ticks the colours to be shown.
#pragma once

#include "base/tool_pattern.h"

class AViewFilterTool : public TToolPattern<AViewFilterTool> {
public:
    static const AString className;
    static constexpr ToolConstants constants{IDS_VIEW_FILTER, IDS_TIP_VIEW_FILTER, ToolChanges::view};

    AViewFilterTool() { setUp(); }

    int isValid() override { return viewHasObjects(*this); }
    using ATool::onToolStart;
    int onToolStart() override;
};
