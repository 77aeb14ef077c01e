// The classes and categories by name, in the orders that the pages show.
//
//     for (const BitmapKind& kind : kBitmapKinds)
//         condition.reset(kind.className, kind.nameId, kind.classifier);
#pragma once

#include <array>

#include "conditions/object_condition.h"

// The host's object classes, in the order in which a page lists their entries. ABitmap stands between
// ACombinePathText and ACombineWeld: what is drawn, before what combines.
inline constexpr std::array<const WCHAR*, 37> kObjectClasses = {
    _T("ARectangle"),     _T("AOval"),
    _T("APolygon"),       _T("AStarburst"),
    _T("AFan"),           _T("AArrow"),
    _T("AParamShape"),    _T("ARegMark"),
    _T("ADimension"),     _T("ADimensionH"),
    _T("ADimensionV"),    _T("ALabel"),
    _T("ALabel2"),        _T("AEditPath"),
    _T("AGuideLine"),     _T("AOleObject"),
    _T("AGroup"),         _T("AComposite"),
    _T("AMask"),          _T("AText"),
    _T("AArcText"),       _T("ACombinePathText"),
    _T("ABitmap"),        _T("ACombineWeld"),
    _T("ACombineCutOut"), _T("ACombineCommon"),
    _T("ACombineXor"),    _T("ACombineMask"),
    _T("ATransLens"),     _T("AInvertLens"),
    _T("ABrightenLens"),  _T("AWireframeLens"),
    _T("AZoomLens"),      _T("AStripe"),
    _T("AInOutline"),     _T("ADistort"),
    _T("AShadow"),
};

// The names of the sheet's pages, in their order. They are compared without regard to case.
inline constexpr std::array<const WCHAR*, 7> kCategories = {
    _T("Object"), _T("Dimension"), _T("Fill"), _T("Stroke"), _T("Effect"), _T("Layer"), _T("Color"),
};

// A sub-kind of a class: what the classifier answers for its objects is the string id of its name.
struct BitmapKind {
    UINT nameId;
    const WCHAR* className;
    AObjectCondition::Classifier classifier;
};

// The string id of a bitmap's colour model; 0 for an unknown one, and for anything but a bitmap.
UINT bitmapColorModelId(const ARoot* object);

// One row for each colour model, in the order of their names' ids.
extern const std::array<BitmapKind, 6> kBitmapKinds;
