// Opens the Select by Attributes sheet, in which the user ticks what the selection is to hold.
#pragma once

#include "base/tool_pattern.h"

class ASelectByAttrTool : public TToolPattern<ASelectByAttrTool> {
public:
    static const AString className;
    static constexpr ToolConstants constants{IDS_SELECT_BY_ATTRIBUTES, IDS_TIP_SELECT_BY_ATTRIBUTES,
                                             ToolChanges::selection};

    ASelectByAttrTool() { setUp(); }

    int isValid() override { return viewHasObjects(*this); }
    using ATool::onToolStart;
    int onToolStart() override;
};
