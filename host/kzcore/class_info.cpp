#include "kzcore/class_info.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "kzcore/res/resource.h"

namespace {

using enum AClassKind;

// Solid stands last among the fills, so that nothing follows the three-level branches of its colours in a
// check tree: collecting the ticks climbs one level only and would not come back to what follows.
const std::array<AClassInfo, 44> kDatabaseClasses = {{
    {_T("ARectangle"), KZCORE_IDS_RECTANGLE, 0, leaf},
    {_T("AOval"), KZCORE_IDS_OVAL, 0, leaf},
    {_T("APolygon"), KZCORE_IDS_POLYGON, 0, leaf},
    {_T("AStarburst"), KZCORE_IDS_STARBURST, 0, leaf},
    {_T("AFan"), KZCORE_IDS_FAN, 0, leaf},
    {_T("AArrow"), KZCORE_IDS_ARROW, 0, leaf},
    {_T("AParamShape"), KZCORE_IDS_PARAM_SHAPE, 0, leaf},
    {_T("ARegMark"), KZCORE_IDS_REG_MARK, 0, leaf},
    {_T("ADimension"), KZCORE_IDS_DIMENSION, 0, leaf},
    {_T("ADimensionH"), KZCORE_IDS_DIMENSION_H, 0, leaf},
    {_T("ADimensionV"), KZCORE_IDS_DIMENSION_V, 0, leaf},
    {_T("ALabel"), KZCORE_IDS_LABEL, 0, leaf},
    {_T("ALabel2"), KZCORE_IDS_LABEL2, 0, leaf},
    {_T("AEditPath"), KZCORE_IDS_EDIT_PATH, 0, leaf},
    {_T("AGuideLine"), KZCORE_IDS_GUIDE_LINE, 0, leaf},
    {_T("AOleObject"), KZCORE_IDS_OLE_OBJECT, 0, leaf},
    {_T("AGroup"), KZCORE_IDS_GROUP, 0, group},
    {_T("AComposite"), KZCORE_IDS_COMPOSITE, 0, composite},
    {_T("AMask"), KZCORE_IDS_MASK, 0, group},
    {_T("AText"), KZCORE_IDS_TEXT, 0, leaf},
    {_T("AArcText"), KZCORE_IDS_ARC_TEXT, 0, leaf},
    {_T("ACombinePathText"), KZCORE_IDS_COMBINE_PATH_TEXT, 0, leaf},
    {_T("ABitmap"), KZCORE_IDS_BITMAP, 0, bitmap},
    {_T("ACombineWeld"), KZCORE_IDS_COMBINE_WELD, 0, effect},
    {_T("ACombineCutOut"), KZCORE_IDS_COMBINE_CUT_OUT, 0, effect},
    {_T("ACombineCommon"), KZCORE_IDS_COMBINE_COMMON, 0, effect},
    {_T("ACombineXor"), KZCORE_IDS_COMBINE_XOR, 0, effect},
    {_T("ACombineMask"), KZCORE_IDS_COMBINE_MASK, 0, effect},
    {_T("ATransLens"), KZCORE_IDS_TRANS_LENS, 0, effect},
    {_T("AInvertLens"), KZCORE_IDS_INVERT_LENS, 0, effect},
    {_T("ABrightenLens"), KZCORE_IDS_BRIGHTEN_LENS, 0, effect},
    {_T("AWireframeLens"), KZCORE_IDS_WIREFRAME_LENS, 0, effect},
    {_T("AZoomLens"), KZCORE_IDS_ZOOM_LENS, 0, effect},
    {_T("AStripe"), KZCORE_IDS_STRIPE, 0, effect},
    {_T("AInOutline"), KZCORE_IDS_IN_OUTLINE, 0, effect},
    {_T("ADistort"), KZCORE_IDS_DISTORT, 0, effect},
    {_T("AShadow"), KZCORE_IDS_SHADOW, 0, effect},
    {_T("AGradientBrushItem"), KZCORE_IDS_GRADIENT_BRUSH, 0, brushItem},
    {_T("APatternBrushItem"), KZCORE_IDS_PATTERN_BRUSH, 0, brushItem},
    {_T("ASolidBrushItem"), KZCORE_IDS_SOLID_BRUSH, 0, brushItem},
    {_T("APenItem"), KZCORE_IDS_PEN, 0, penItem},
    {_T("ALayer"), KZCORE_IDS_LAYER, 0, layer},
    {_T("AGuideLayer"), KZCORE_IDS_GUIDE_LAYER, 0, layer},
    {_T("AMasterLayer"), KZCORE_IDS_MASTER_LAYER, 0, layer},
}};

// Colours have no category: a colour entry of the view filter is two levels deep, and nothing follows a
// deeper one.
const std::array<AClassInfo, 4> kColorClasses = {{
    {_T("ARGBColorItem"), KZCORE_IDS_RGB_COLOR, 0, colorItem},
    {_T("ACMYKColorItem"), KZCORE_IDS_CMYK_COLOR, 0, colorItem},
    {_T("AGrayColorItem"), KZCORE_IDS_GRAY_COLOR, 0, colorItem},
    {_T("ASpotColorItem"), KZCORE_IDS_SPOT_COLOR, 0, colorItem},
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
