// The five tools that show and hide colours with one click.
//
// tool               | started on | leaves in the view                                     | selection
// AShowAllTool       |            | no filter                                              | stays
// AShowAllExceptTool | an item    | a filter that hides this colour and nothing else       | stays
// AShowThisTool      | an item    | its filter, with this colour on the side of the shown  | stays
// AHideThisTool      | an item    | its filter, with this colour on the side of the hidden | reset
// AHideAllExceptTool | an item    | a filter that shows this colour and nothing else       | reset
//
// The tools that hide reset the selection, so that hidden objects do not stay selected. Show This and Hide
// This leave the filter alone when the colour is visible, or hidden, already. Only Show All removes the
// filter; the others work on the view's own one, or hand it a new one.
//
// The host starts these tools on an active view with the item that the user chose. Without a view or an item
// there is nothing to do: a tool then ends and leaves view and selection alone, unless it says otherwise.
#pragma once

#include "base/tool_pattern.h"

// Shows everything again, whatever class the filter is of.
class AShowAllTool : public TToolPattern<AShowAllTool> {
public:
    static constexpr const WCHAR* className = _T("AShowAllTool");
    static constexpr ToolConstants constants{IDS_SHOW_ALL, IDS_TIP_SHOW_ALL, ToolChanges::view};

    AShowAllTool() { setUp(); }

    int isValid() override { return viewHasObjects(*this); }
    using ATool::onToolStart;
    int onToolStart() override;
};

// Shows everything but one colour. Returns 0 when there is no memory for a filter.
class AShowAllExceptTool : public TToolPattern<AShowAllExceptTool> {
public:
    static constexpr const WCHAR* className = _T("AShowAllExceptTool");
    static constexpr ToolConstants constants{IDS_SHOW_ALL_EXCEPT, IDS_TIP_SHOW_ALL_EXCEPT, ToolChanges::view};

    AShowAllExceptTool() { setUp(); }

    using ATool::onToolStart;
    int onToolStart(const AFPoint& point, void* data) override;
};

// Shows one colour. Returns 0 when there is no memory for a filter.
class AShowThisTool : public TToolPattern<AShowThisTool> {
public:
    static constexpr const WCHAR* className = _T("AShowThisTool");
    static constexpr ToolConstants constants{IDS_SHOW_THIS, IDS_TIP_SHOW_THIS, ToolChanges::view};

    AShowThisTool() { setUp(); }

    using ATool::onToolStart;
    int onToolStart(const AFPoint& point, void* data) override;
};

// Hides one colour. The only one that returns 0 when there is no view.
class AHideThisTool : public TToolPattern<AHideThisTool> {
public:
    static constexpr const WCHAR* className = _T("AHideThisTool");
    static constexpr ToolConstants constants{IDS_HIDE_THIS, IDS_TIP_HIDE_THIS, ToolChanges::view};

    AHideThisTool() { setUp(); }

    using ATool::onToolStart;
    int onToolStart(const AFPoint& point, void* data) override;
};

// Hides everything but one colour.
class AHideAllExceptTool : public TToolPattern<AHideAllExceptTool> {
public:
    static constexpr const WCHAR* className = _T("AHideAllExceptTool");
    static constexpr ToolConstants constants{IDS_HIDE_ALL_EXCEPT, IDS_TIP_HIDE_ALL_EXCEPT, ToolChanges::view};

    AHideAllExceptTool() { setUp(); }

    using ATool::onToolStart;
    int onToolStart(const AFPoint& point, void* data) override;
};
