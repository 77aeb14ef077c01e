// Opens the View Filter dialog, in which the user ticks the colours to be shown.
#pragma once

#include "base/tool_pattern.h"
#include "kzutil/arrays.h"

class AViewFilter;

class AViewFilterTool : public TToolPattern<AViewFilterTool> {
public:
    static constexpr const WCHAR* className = _T("AViewFilterTool");
    static constexpr ToolConstants constants{IDS_VIEW_FILTER, IDS_TIP_VIEW_FILTER, ToolChanges::view};

    AViewFilterTool() { setUp(); }

    int isValid() override { return viewHasObjects(*this); }
    using ATool::onToolStart;
    int onToolStart() override;

    // What the dialog does to the active view.
    //
    // Gives the view's filter these lists, of which it takes clones, and flags; makes the filter when the
    // view has none of ours. Without memory for it the view is left without a filter. Showing everything
    // needs none: uniform without negative takes the filter away.
    void applyFilter(const AObArray& show, const AObArray& hide, int uniform, int negative);
    // Gives the view another filter, which it owns then, or none, and redraws it.
    void replaceFilter(AViewFilter* filter);
};
