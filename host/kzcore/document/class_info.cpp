#include "kzcore/document/class_info.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "kzcore/res/resource.h"

namespace {

using enum AClassKind;

// Solid stands last among the fills, so that nothing follows the three-level branches of its colours in a
// check tree: collecting the ticks climbs one level only and would not come back to what follows.
const std::array<AClassInfo, 44> kDatabaseClasses = {{
    {_T("ARectangle"), KZCORE_IDS_RECTANGLE, KZCORE_IDB_RECTANGLE, leaf},
    {_T("AOval"), KZCORE_IDS_OVAL, KZCORE_IDB_OVAL, leaf},
    {_T("APolygon"), KZCORE_IDS_POLYGON, KZCORE_IDB_POLYGON, leaf},
    {_T("AStarburst"), KZCORE_IDS_STARBURST, KZCORE_IDB_STARBURST, leaf},
    {_T("AFan"), KZCORE_IDS_FAN, KZCORE_IDB_FAN, leaf},
    {_T("AArrow"), KZCORE_IDS_ARROW, KZCORE_IDB_ARROW, leaf},
    {_T("AParamShape"), KZCORE_IDS_PARAM_SHAPE, KZCORE_IDB_PARAM_SHAPE, leaf},
    {_T("ARegMark"), KZCORE_IDS_REG_MARK, KZCORE_IDB_REG_MARK, leaf},
    {_T("ADimension"), KZCORE_IDS_DIMENSION, KZCORE_IDB_DIMENSION, leaf},
    {_T("ADimensionH"), KZCORE_IDS_DIMENSION_H, KZCORE_IDB_DIMENSION_H, leaf},
    {_T("ADimensionV"), KZCORE_IDS_DIMENSION_V, KZCORE_IDB_DIMENSION_V, leaf},
    {_T("ALabel"), KZCORE_IDS_LABEL, KZCORE_IDB_LABEL, leaf},
    {_T("ALabel2"), KZCORE_IDS_LABEL2, KZCORE_IDB_LABEL2, leaf},
    {_T("AEditPath"), KZCORE_IDS_EDIT_PATH, KZCORE_IDB_EDIT_PATH, leaf},
    {_T("AGuideLine"), KZCORE_IDS_GUIDE_LINE, KZCORE_IDB_GUIDE_LINE, leaf},
    {_T("AOleObject"), KZCORE_IDS_OLE_OBJECT, KZCORE_IDB_OLE_OBJECT, leaf},
    {_T("AGroup"), KZCORE_IDS_GROUP, KZCORE_IDB_GROUP, group},
    {_T("AComposite"), KZCORE_IDS_COMPOSITE, KZCORE_IDB_COMPOSITE, composite},
    {_T("AMask"), KZCORE_IDS_MASK, KZCORE_IDB_MASK, group},
    {_T("AText"), KZCORE_IDS_TEXT, KZCORE_IDB_TEXT, leaf},
    {_T("AArcText"), KZCORE_IDS_ARC_TEXT, KZCORE_IDB_ARC_TEXT, leaf},
    {_T("ACombinePathText"), KZCORE_IDS_COMBINE_PATH_TEXT, KZCORE_IDB_COMBINE_PATH_TEXT, leaf},
    {_T("ABitmap"), KZCORE_IDS_BITMAP, KZCORE_IDB_BITMAP, bitmap},
    {_T("ACombineWeld"), KZCORE_IDS_COMBINE_WELD, KZCORE_IDB_COMBINE_WELD, effect},
    {_T("ACombineCutOut"), KZCORE_IDS_COMBINE_CUT_OUT, KZCORE_IDB_COMBINE_CUT_OUT, effect},
    {_T("ACombineCommon"), KZCORE_IDS_COMBINE_COMMON, KZCORE_IDB_COMBINE_COMMON, effect},
    {_T("ACombineXor"), KZCORE_IDS_COMBINE_XOR, KZCORE_IDB_COMBINE_XOR, effect},
    {_T("ACombineMask"), KZCORE_IDS_COMBINE_MASK, KZCORE_IDB_COMBINE_MASK, effect},
    {_T("ATransLens"), KZCORE_IDS_TRANS_LENS, KZCORE_IDB_TRANS_LENS, effect},
    {_T("AInvertLens"), KZCORE_IDS_INVERT_LENS, KZCORE_IDB_INVERT_LENS, effect},
    {_T("ABrightenLens"), KZCORE_IDS_BRIGHTEN_LENS, KZCORE_IDB_BRIGHTEN_LENS, effect},
    {_T("AWireframeLens"), KZCORE_IDS_WIREFRAME_LENS, KZCORE_IDB_WIREFRAME_LENS, effect},
    {_T("AZoomLens"), KZCORE_IDS_ZOOM_LENS, KZCORE_IDB_ZOOM_LENS, effect},
    {_T("AStripe"), KZCORE_IDS_STRIPE, KZCORE_IDB_STRIPE, effect},
    {_T("AInOutline"), KZCORE_IDS_IN_OUTLINE, KZCORE_IDB_IN_OUTLINE, effect},
    {_T("ADistort"), KZCORE_IDS_DISTORT, KZCORE_IDB_DISTORT, effect},
    {_T("AShadow"), KZCORE_IDS_SHADOW, KZCORE_IDB_SHADOW, effect},
    {_T("AGradientBrushItem"), KZCORE_IDS_GRADIENT_BRUSH, KZCORE_IDB_GRADIENT_BRUSH, brushItem},
    {_T("APatternBrushItem"), KZCORE_IDS_PATTERN_BRUSH, KZCORE_IDB_PATTERN_BRUSH, brushItem},
    {_T("ASolidBrushItem"), KZCORE_IDS_SOLID_BRUSH, KZCORE_IDB_SOLID_BRUSH, brushItem},
    {_T("APenItem"), KZCORE_IDS_PEN, KZCORE_IDB_PEN, penItem},
    {_T("ALayer"), KZCORE_IDS_LAYER, KZCORE_IDB_LAYER, layer},
    {_T("AGuideLayer"), KZCORE_IDS_GUIDE_LAYER, KZCORE_IDB_GUIDE_LAYER, layer},
    {_T("AMasterLayer"), KZCORE_IDS_MASTER_LAYER, KZCORE_IDB_MASTER_LAYER, layer},
}};

// Colours have no category: a colour entry of the view filter is two levels deep, and nothing follows a
// deeper one.
const std::array<AClassInfo, 4> kColorClasses = {{
    {_T("ARGBColorItem"), KZCORE_IDS_RGB_COLOR, KZCORE_IDB_RGB_COLOR, colorItem},
    {_T("ACMYKColorItem"), KZCORE_IDS_CMYK_COLOR, KZCORE_IDB_CMYK_COLOR, colorItem},
    {_T("AGrayColorItem"), KZCORE_IDS_GRAY_COLOR, KZCORE_IDB_GRAY_COLOR, colorItem},
    {_T("ASpotColorItem"), KZCORE_IDS_SPOT_COLOR, KZCORE_IDB_SPOT_COLOR, colorItem},
}};

}  // namespace

std::span<const AClassInfo> databaseClasses() {
    return kDatabaseClasses;
}

std::span<const AClassInfo> colorItemClasses() {
    return kColorClasses;
}

const AClassInfo* findClass(kzutil::WideView name) {
    static const auto rows = [] {
        std::unordered_map<kzutil::WideView, const AClassInfo*> byName;
        for (const AClassInfo& row : kDatabaseClasses) byName.emplace(row.name.view(), &row);
        for (const AClassInfo& row : kColorClasses) byName.emplace(row.name.view(), &row);
        return byName;
    }();
    const auto found = rows.find(name);
    return found == rows.end() ? nullptr : found->second;
}
