#include "select/select_by_attr_tool.h"

#include "kzcore/document/document.h"
#include "select/object_walk.h"
#include "select/page_filler.h"
#include "select/select_by_attr_sheet.h"
#include "select/select_page.h"

namespace {

// The data of a run goes whatever ends the run.
class Released {
public:
    explicit Released(ASelectByAttrTool& tool) : m_tool(tool) {}
    ~Released() { m_tool.releaseSelectionData(); }
    Released(const Released&) = delete;
    Released& operator=(const Released&) = delete;

private:
    ASelectByAttrTool& m_tool;
};

// Asks once for each class: objects of a class share its name, and what is asked depends on the name alone.
class ShownClasses {
public:
    bool contain(const AObject& object) {
        const AString& name = object.getClassInfo().name;
        if (const bool* known = m_known.find(&name)) return *known;
        return m_known[&name] = ASelectByAttrTool::hasClassDisplayStructure(object) != 0;
    }

private:
    PointerTable<bool> m_known;
};

}  // namespace

int ASelectByAttrTool::onToolStart() {
    ASelectByAttrSheet sheet(this, IDS_SELECT_BY_ATTRIBUTES_CAPTION, nullptr, 0);
    if (ADocView* view = ADocView::GetActiveView()) {
        const Released released(*this);
        prepareSelectionData(*view);
        createPages(sheet);
        fillPages(sheet);
        sheet.addPages();
        sheet.DoModal();
    }
    notifyEnd(nullptr);
    return 1;
}

int ASelectByAttrTool::hasClassDisplayStructure(const ARoot& object) {
    AString ignored;
    return object.getClassDisplayStructure(ignored);
}

void ASelectByAttrTool::releaseSelectionData() {
    m_candidates.RemoveAll();
    m_runs.clear();
    m_selected.RemoveAll();
    m_layerPool.RemoveAll();
    m_selectedLayers.RemoveAll();
    m_selectedSet.clear();
    m_layerSet.clear();
}

void ASelectByAttrTool::prepareSelectionData(ADocView& view) {
    releaseSelectionData();
    appendLayers(view, m_layerPool);
    collectCandidates(view);
    collectSelected(view);
    collectSelectedLayers();
}

void ASelectByAttrTool::collectCandidates(const ADocView& view) {
    // Room for all objects at once: an array that grows step by step touches twice as much memory.
    m_candidates.SetSize(static_cast<int>(view.getDocument()->getObjectCount()));
    m_candidates.RemoveAll();
    ShownClasses shown;
    std::vector<const AObList*> lists = listsOfEditableLayers(m_layerPool);
    walkBreadthFirst(lists, [&](AObject& object) -> const AObList* {
        if (isPassedOver(object)) return nullptr;
        if (!shown.contain(object)) return openChildren(object);
        if (m_runs.empty() || m_runs.back().container != object.getParent())
            m_runs.push_back({object.getParent(), m_candidates.GetSize()});
        m_candidates.Add(&object);
        return openChildren(object);
    });
}

// Locked and hidden objects count, too: they are selected. A container is entered once: what a second time
// would bring has been met before.
void ASelectByAttrTool::collectSelected(const ADocView& view) {
    ShownClasses shown;
    PointerTable<bool> entered;
    AObList work(0, 10);
    if (!view.m_selection || !view.m_selection->getSelectedChildren(&work)) return;
    walkBreadthFirst(work, [&](AObject& object) -> WalkStep {
        if (shown.contain(object) && !std::exchange(m_selectedSet[&object], true)) m_selected.Add(&object);
        const AObList* children = openChildren(object);
        return {children && !std::exchange(entered[&object], true) ? children : nullptr};
    });
}

// A layer that is found as the last of the list is appended once more: the list only tells who is in it, and
// the search for a layer takes the end of the list for a miss.
void ASelectByAttrTool::collectSelectedLayers() {
    PointerTable<ALayer*> layerOf;  // by container
    PointerTable<int> places;       // of the first occurrence, from 1 on
    std::vector<const AParent*> path;
    for (ARoot* entry : m_selected) {
        ALayer* layer = static_cast<AObject*>(entry)->asLayer();
        path.clear();
        for (AParent* at = static_cast<AObject*>(entry)->getParent(); at && !layer; at = at->getParent()) {
            path.push_back(at);
            ALayer** known = layerOf.find(at);
            layer = known ? *known : at->asLayer();
            if (known) break;
        }
        for (const AParent* at : path) layerOf[at] = layer;
        if (!layer) continue;
        int& place = places[layer];
        if (place != 0 && place != m_selectedLayers.GetCount()) continue;
        m_selectedLayers.AddTail(layer);
        m_layerSet[layer] = true;
        if (place == 0) place = m_selectedLayers.GetCount();
    }
}

void ASelectByAttrTool::fillPages(ASelectByAttrSheet& sheet) {
    std::vector<ACheckPageBase*> pages;
    for (int i = 0; i < sheet.getSelectPageCount(); ++i) pages.push_back(&sheet.getSelectPage(i));
    PageFiller filler(pages);
    for (ARoot* entry : m_layerPool) {
        auto& layer = static_cast<ALayer&>(*entry);
        filler.offerLayer(layer, isSelectedLayer(layer) != 0);
    }
    forEachObject(m_candidates,
                  [&](AObject& object) { filler.offerObject(object, isSelectedObject(object) != 0); });
}
