// Selects every object with the fill of the first selected object.
#pragma once

#include "base/tool_pattern.h"

class ASelectColorTool : public TToolPattern<ASelectColorTool> {
public:
    static constexpr const WCHAR* className = _T("ASelectColorTool");
    static constexpr ToolConstants constants{IDS_SELECT_SIMILAR_COLOR, IDS_TIP_SELECT_SIMILAR_COLOR,
                                             ToolChanges::selection};

    ASelectColorTool() { setUp(); }

    int isValid() override;
    using ATool::onToolStart;
    int onToolStart() override;
};
