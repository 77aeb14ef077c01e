#include <algorithm>

#include "platform/afx/gdi.h"
#include "platform/driver/controls.h"
#include "platform/driver/dialog.h"

namespace driver {

namespace {

// Pictures are drawn side by side, so many at a time: a bitmap cannot be as wide as a list is long.
constexpr int kAtOnce = 256;

class Strip {
public:
    Strip(HIMAGELIST list, TreeImages& images) : m_list(list), m_images(images) {
        m_width = images.width * kAtOnce;
        if (!m_context.CreateCompatibleDC(&m_screen) ||
            !m_bitmap.CreateCompatibleBitmap(&m_screen, m_width, images.height))
            throw std::bad_alloc();
    }

    void read(int first, int count) {
        draw(first, count);
        readRows();
        for (int i = 0; i < count; ++i) {
            std::vector<std::uint32_t>& picture = m_images.pictures.emplace_back();
            for (int y = 0; y < m_images.height; ++y) {
                for (int x = 0; x < m_images.width; ++x) {
                    const auto at = static_cast<std::size_t>(y * m_width + i * m_images.width + x);
                    picture.push_back(m_rows[at] | 0xff000000U);
                }
            }
        }
    }

private:
    void draw(int first, int count) {
        const CSelection target(m_context, m_bitmap);
        for (int i = 0; i < count; ++i)
            ImageList_Draw(m_list, first + i, m_context, i * m_images.width, 0, ILD_NORMAL);
    }

    void readRows() {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = m_width;
        info.bmiHeader.biHeight = -m_images.height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_rows.resize(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_images.height));
        GetDIBits(m_screen, m_bitmap, 0, static_cast<UINT>(m_images.height), m_rows.data(), &info,
                  DIB_RGB_COLORS);
    }

    HIMAGELIST m_list;
    TreeImages& m_images;
    int m_width = 0;
    CClientDC m_screen{nullptr};
    CDC m_context;
    CBitmap m_bitmap;
    std::vector<DWORD> m_rows;
};

}  // namespace

TreeImages Dialog::treeImages() const {
    requireOpen();
    TreeImages images;
    const HWND tree = visibleTree(m_handle);
    if (!tree) return images;
    const auto list = reinterpret_cast<HIMAGELIST>(SendMessageW(tree, TVM_GETIMAGELIST, TVSIL_NORMAL, 0));
    if (!list || !ImageList_GetIconSize(list, &images.width, &images.height)) return images;
    const int count = ImageList_GetImageCount(list);
    Strip strip(list, images);
    for (int first = 0; first < count; first += kAtOnce) strip.read(first, std::min(kAtOnce, count - first));
    return images;
}

}  // namespace driver
