// A plug-in with one tool, which takes the selection away.
#include <new>

#include "kzcore/document/application.h"
#include "kzcore/tool/plugin.h"
#include "kzcore/tool/tool.h"
#include "kzcore/view/view.h"

namespace {

class ASelectNothingTool : public ATool {
public:
    using ATool::onToolStart;
    int onToolStart() override {
        AApplication::GetApplication()->getActiveView()->m_selection->resetSelection(1);
        notifyEnd(nullptr);
        return 1;
    }
};

ATool* create() {
    return new (std::nothrow) ASelectNothingTool;
}
int zero() {
    return 0;
}

constexpr APlugInExport kTable[] = {
    {kPlugInHeader, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    {kPlugInTool, 0, _T("ASelectNothingTool"), nullptr, &create, &zero, &zero},
    {kPlugInEnd, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
};

}  // namespace

extern "C" KZ_EXPORT const APlugInExport* APlugInExportGetList() {
    return kTable;
}
