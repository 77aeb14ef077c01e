// The plug-in export table.
#include <new>

#include "kzcore/tool/plugin.h"
#include "select/select_by_attr_tool.h"
#include "select/select_color_tool.h"
#include "select/select_similar_tool.h"
#include "viewfilter/color_tools.h"
#include "viewfilter/view_filter_tool.h"

namespace {

// Just what the tool's createInstance does.
template <class Tool>
ATool* create() {
    return new (std::nothrow) Tool;
}

int answerZero() {
    return 0;
}

template <class Tool>
constexpr APlugInExport row(const WCHAR* className, std::uint32_t flags) {
    return {kPlugInTool, flags, className, nullptr, &create<Tool>, &answerZero, &answerZero};
}

constexpr APlugInExport kTable[] = {
    {kPlugInHeader, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
    row<AViewFilterTool>(_T("AViewFilterTool"), 0),
    row<ASelectByAttrTool>(_T("ASelectByAttrTool"), 0),
    row<ASelectSimilarTool>(_T("ASelectSimilarTool"), 0),
    row<ASelectColorTool>(_T("ASelectColorTool"), 0),
    row<AShowAllTool>(_T("AShowAllTool"), kToolTakesItem),
    row<AShowAllExceptTool>(_T("AShowAllExceptTool"), kToolTakesItem),
    row<AShowThisTool>(_T("AShowThisTool"), kToolTakesItem),
    row<AHideThisTool>(_T("AHideThisTool"), kToolTakesItem),
    row<AHideAllExceptTool>(_T("AHideAllExceptTool"), kToolTakesItem),
    {kPlugInEnd, 0, nullptr, nullptr, nullptr, nullptr, nullptr},
};

}  // namespace

extern "C" KZ_EXPORT const APlugInExport* APlugInExportGetList() {
    return kTable;
}
