#include <algorithm>
#include <utility>

#include "platform/headless/gdi/objects.h"

using namespace headless;

namespace {

// The pictures stand one below the other in a bitmap of one picture's width, so that adding some appends
// rows, and ten thousand additions cost as much as the vector's geometric growth.
struct ImageList : GdiObject {
    static constexpr GdiKind kKind = GdiKind::imageList;

    ImageList(int pictureWidth, int pictureHeight, WORD depth)
        : GdiObject(kKind), width(pictureWidth), height(pictureHeight) {
        auto bitmap = std::make_unique<Bitmap>();
        bitmap->width = width;
        bitmap->depth = depth;
        bitmap->ownedByList = true;
        enterObject(bitmap.get());
        pictures = bitmap.release();
    }
    ~ImageList() override { destroyObject(pictures); }

    int top(int index) const { return index * height; }
    bool has(int index) const { return index >= 0 && index < count; }

    const int width;
    const int height;
    int count = 0;
    COLORREF background = CLR_NONE;
    Bitmap* pictures;
};

bool appendRows(Bitmap& pictures, std::int64_t rows) {
    constexpr std::int64_t kMostRows = 1 << 28;
    std::int64_t height = pictures.height + rows;
    if (height > kMostRows) return fails(ERROR_NOT_ENOUGH_MEMORY);
    return guarded([&] {
        pictures.pixels.resize(static_cast<std::size_t>(height) * static_cast<std::size_t>(pictures.width));
        pictures.height = static_cast<int>(height);
        return true;
    });
}

}  // namespace

HIMAGELIST ImageList_Create(int width, int height, UINT flags, int, int) {
    if (width <= 0 || height <= 0 || (flags & ILC_MASK) != 0) return fails(ERROR_INVALID_PARAMETER);
    const WORD depth = (flags & (ILC_COLOR24 | ILC_COLOR32)) == ILC_COLOR24 ? 24 : 32;
    return guarded([&] { return handOver<HIMAGELIST>(std::make_unique<ImageList>(width, height, depth)); });
}

BOOL ImageList_Destroy(HIMAGELIST handle) {
    auto* list = find<ImageList>(handle);
    if (list == nullptr || list->pictures->selections > 0) return FALSE;
    destroyObject(list);
    return TRUE;
}

int ImageList_GetImageCount(HIMAGELIST handle) {
    auto* list = find<ImageList>(handle);
    return list == nullptr ? 0 : list->count;
}

BOOL ImageList_GetIconSize(HIMAGELIST handle, int* width, int* height) {
    auto* list = find<ImageList>(handle);
    if (list == nullptr || width == nullptr || height == nullptr) return FALSE;
    *width = list->width;
    *height = list->height;
    return TRUE;
}

int ImageList_Add(HIMAGELIST handle, HBITMAP imageHandle, HBITMAP) {
    auto* list = find<ImageList>(handle);
    auto* image = find<Bitmap>(imageHandle);
    if (list == nullptr || image == nullptr || image->selections > 0) return -1;
    int added = image->width / list->width;
    if (added == 0 || image->height < list->height) return -1;
    if (!appendRows(*list->pictures, std::int64_t{added} * list->height)) return -1;
    for (int i = 0; i < added; ++i) {
        copyPixels(*list->pictures, 0, list->top(list->count + i), list->width, list->height, *image,
                   i * list->width, 0);
    }
    return std::exchange(list->count, list->count + added);
}

BOOL ImageList_Remove(HIMAGELIST handle, int index) {
    auto* list = find<ImageList>(handle);
    if (list == nullptr || (index != -1 && !list->has(index))) return FALSE;
    const int first = index == -1 ? 0 : index;
    const int end = index == -1 ? list->count : index + 1;
    Bitmap& pictures = *list->pictures;
    const auto pixels = pictures.pixels.begin();
    pictures.pixels.erase(pixels + std::ptrdiff_t{list->top(first)} * list->width,
                          pixels + std::ptrdiff_t{list->top(end)} * list->width);
    pictures.height -= (end - first) * list->height;
    list->count -= end - first;
    return TRUE;
}

COLORREF ImageList_SetBkColor(HIMAGELIST handle, COLORREF color) {
    auto* list = find<ImageList>(handle);
    return list == nullptr ? CLR_NONE : std::exchange(list->background, color);
}

COLORREF ImageList_GetBkColor(HIMAGELIST handle) {
    auto* list = find<ImageList>(handle);
    return list == nullptr ? CLR_NONE : list->background;
}

BOOL ImageList_GetImageInfo(HIMAGELIST handle, int index, IMAGEINFO* info) {
    auto* list = find<ImageList>(handle);
    if (list == nullptr || info == nullptr || !list->has(index)) return FALSE;
    *info = IMAGEINFO{};
    info->hbmImage = handleOf<HBITMAP>(list->pictures);
    info->rcImage = RECT{0, list->top(index), list->width, list->top(index + 1)};
    return TRUE;
}

BOOL ImageList_Draw(HIMAGELIST handle, int index, HDC contextHandle, int x, int y, UINT style) {
    auto* list = find<ImageList>(handle);
    auto* context = find<DeviceContext>(contextHandle);
    if (list == nullptr || context == nullptr || !list->has(index) || style != ILD_NORMAL) return FALSE;
    if (context->bitmap == nullptr) return TRUE;
    if (context->bitmap->depth == 1) return FALSE;
    copyPixels(*context->bitmap, x, y, list->width, list->height, *list->pictures, 0, list->top(index));
    return TRUE;
}
