#include "conditions/class_tables.h"

#include "kzcore/document/object.h"
#include "res/resource.h"

UINT bitmapColorModelId(const ARoot* object) {
    const auto* bitmap = dynamic_cast<const ABitmap*>(object);
    if (!bitmap) return 0;
    switch (bitmap->getColorModel()) {
        case ABitmap::rgb:
            return IDS_BITMAP_RGB;
        case ABitmap::blackAndWhite:
            return IDS_BITMAP_BLACK_AND_WHITE;
        case ABitmap::grayscale:
            return IDS_BITMAP_GRAYSCALE;
        case ABitmap::cmyk:
            return IDS_BITMAP_CMYK;
        case ABitmap::indexed:
            return IDS_BITMAP_INDEXED;
        case ABitmap::lab:
            return IDS_BITMAP_LAB;
        default:
            return 0;
    }
}

constinit const std::array<BitmapKind, 6> kBitmapKinds = {{
    {IDS_BITMAP_BLACK_AND_WHITE, _T("ABitmap"), bitmapColorModelId},
    {IDS_BITMAP_GRAYSCALE, _T("ABitmap"), bitmapColorModelId},
    {IDS_BITMAP_INDEXED, _T("ABitmap"), bitmapColorModelId},
    {IDS_BITMAP_RGB, _T("ABitmap"), bitmapColorModelId},
    {IDS_BITMAP_CMYK, _T("ABitmap"), bitmapColorModelId},
    {IDS_BITMAP_LAB, _T("ABitmap"), bitmapColorModelId},
}};
