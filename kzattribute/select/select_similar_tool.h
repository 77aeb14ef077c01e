// Selects every object of the class of the first selected object.
#pragma once

#include "base/tool_pattern.h"

class ASelectSimilarTool : public TToolPattern<ASelectSimilarTool> {
public:
    static constexpr const WCHAR* className = _T("ASelectSimilarTool");
    static constexpr ToolConstants constants{IDS_SELECT_SIMILAR_OBJECTS, IDS_TIP_SELECT_SIMILAR_OBJECTS,
                                             ToolChanges::selection};

    ASelectSimilarTool() { setUp(); }

    int isValid() override;
    using ATool::onToolStart;
    int onToolStart() override;
};
