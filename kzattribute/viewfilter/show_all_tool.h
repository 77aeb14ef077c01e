// Shows everything again: takes the filter from the view.
#pragma once

#include "base/tool_pattern.h"

class AShowAllTool : public TToolPattern<AShowAllTool> {
public:
    static const AString className;
    static constexpr ToolConstants constants{IDS_SHOW_ALL, IDS_TIP_SHOW_ALL, ToolChanges::view};

    AShowAllTool() { setUp(); }

    int isValid() override { return viewHasObjects(*this); }
    using ATool::onToolStart;
    int onToolStart() override;
};
