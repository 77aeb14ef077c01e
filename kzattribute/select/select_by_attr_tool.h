// Opens the Select by Attributes sheet, in which the user ticks what the selection is to hold.
//
// onToolStart gathers what the sheet is about, makes the pages and fills them, runs the sheet and empties
// everything again: nothing survives a run. The selection changes in the sheet alone (select_by_attr_sheet.h).
#pragma once

#include "base/tool_pattern.h"
#include "kzutil/arrays.h"
#include "select/pointer_table.h"

class ADocView;
class ALayer;
class AObject;
class AParent;
class ASelectByAttrSheet;

class ASelectByAttrTool : public TToolPattern<ASelectByAttrTool> {
public:
    static constexpr const WCHAR* className = _T("ASelectByAttrTool");
    static constexpr ToolConstants constants{IDS_SELECT_BY_ATTRIBUTES, IDS_TIP_SELECT_BY_ATTRIBUTES,
                                             ToolChanges::selection};

    ASelectByAttrTool() { setUp(); }

    int isValid() override { return viewHasObjects(*this); }
    using ATool::onToolStart;
    int onToolStart() override;

    // --- the steps of a run, in their order ---
    // What the view's document and selection hold. The lists belong to the document.
    void prepareSelectionData(ADocView& view);
    // One page for each category of the classes that users see, with an entry for each class; entries for the
    // bitmaps' kinds, "No fill" with the colour models, and "No stroke" where there is a page for them.
    void createPages(ASelectByAttrSheet& sheet);
    // Offers every layer and every candidate, with its fill and its stroke, to the pages.
    void fillPages(ASelectByAttrSheet& sheet);
    void releaseSelectionData();

    // The names of the host's database classes that have a name for users, in the order of its table.
    static void getSelectableClassNames(AStringArray& out);
    static int hasClassDisplayStructure(const ARoot& object);
    int isSelectedLayer(const ALayer& layer) const { return m_layerSet.contains(&layer); }
    int isSelectedObject(const AObject& object) const {
        return !m_selectedSet.isEmpty() && m_selectedSet.contains(&object);
    }

    // What the sheet may select: everything on editable layers, in breadth-first order, containers before what
    // they hold.
    const AObArray& getCandidateObjects() const { return m_candidates; }
    // Where those begin in the list that lie in another container than the one before.
    struct CandidateRun {
        AParent* container;
        int first;
    };
    const std::vector<CandidateRun>& getCandidateRuns() const { return m_runs; }
    // The selection with what is in selected containers, wherever it lies; none twice.
    const AObArray& getSelectedObjects() const { return m_selected; }
    // Every layer of the view's database, then of the secondary one.
    const AObList& getLayerPool() const { return m_layerPool; }
    // The layers of the selected objects.
    const AObList& getSelectedLayers() const { return m_selectedLayers; }

private:
    void collectCandidates(const ADocView& view);
    void collectSelected(const ADocView& view);
    void collectSelectedLayers();

    AObArray m_candidates{0};
    std::vector<CandidateRun> m_runs;
    AObArray m_selected{0};
    AObList m_layerPool{0, 10};
    AObList m_selectedLayers{0, 10};
    // Tell who is in the lists above.
    PointerTable<bool> m_selectedSet;
    PointerTable<bool> m_layerSet;
};
