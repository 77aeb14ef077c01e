// A plug-in with one tool: selects what lies on the layers and is not selected.
#include <new>

#include "kzcore/document/application.h"
#include "kzcore/document/document.h"
#include "kzcore/tool/plugin.h"
#include "kzcore/tool/tool.h"
#include "kzcore/view/view.h"

namespace {

class AInvertSelectionTool : public ATool {
public:
    AInvertSelectionTool() {
        m_displayName = _T("Invert Selection");
        setToolTipStrings(_T("Selects what is not selected"));
        setDirtySelection(1);
    }

    const AString& getClassName() const override {
        static const AString name(_T("AInvertSelectionTool"));
        return name;
    }
    ARoot* createInstance() const override { return new (std::nothrow) AInvertSelectionTool; }

    int isValid() override {
        return ATool::isValid() && !ADocView::GetActiveView()->m_database->children.IsEmpty();
    }

    // All the work is done in here; the host has made a step of history around it.
    using ATool::onToolStart;
    int onToolStart() override {
        ADocView& view = *ADocView::GetActiveView();
        AObList found(0, 10);
        for (ARoot* entry : view.m_database->children) {
            auto& layer = static_cast<ALayer&>(*entry);
            if (layer.IsLayerEditable()) addUnselected(layer, *view.m_selection, found);
        }
        view.m_selection->resetSelection(0);
        view.m_selection->addSelection(&found, 0, 1);
        notifyEnd(nullptr);
        return 1;
    }

private:
    static void addUnselected(const ALayer& layer, const ASelection& selection, AObList& found) {
        for (ARoot* entry : layer.children) {
            auto* const object = static_cast<AObject*>(entry);
            const bool isReachable = !object->isUnselectable() && !object->getObjectFlags(kObjectHidden);
            if (isReachable && !selection.contains(object)) found.AddTail(object);
        }
    }
};

ATool* create() {
    return new (std::nothrow) AInvertSelectionTool;
}

int zero() {
    return 0;
}

constexpr APlugInExport kTable[] = {
    {kPlugInHeader, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {kPlugInTool, 0, _T("AInvertSelectionTool"), nullptr, &create, &zero, &zero},
    {kPlugInEnd, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
};

}  // namespace

// The one function that a host asks a module for.
extern "C" KZ_EXPORT const APlugInExport* APlugInExportGetList() {
    return kTable;
}
