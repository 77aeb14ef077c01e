// The check tree's pictures.
#include <algorithm>
#include <utility>

#include "checktree/check_tree.h"
#include "kzcore/device/device_mgr.h"
#include "kzcore/document/refer_item.h"
#include "res/resource.h"

namespace {

constexpr int kSide = 16;
constexpr COLORREF kWhite = 0xFFFFFF;

// Pictures are 16 by 16; a strip has one every 16 columns.
constexpr int kStatePictures[] = {2, 4, 6};
constexpr int kItemPictures[] = {1, 3, 5};

}  // namespace

bool ACheckTree::loadBitmap(UINT id, CBitmap& bitmap) const {
    COLORMAP white{kWhite, ::GetSysColor(COLOR_WINDOW)};
    return bitmap.LoadMappedBitmap(id, 0, &white, 1) != 0;
}

void ACheckTree::makeDisabledBitmap(const CBitmap& source, CBitmap& target, int first, int end) {
    BITMAP shape{};
    source.GetBitmap(&shape);
    if (end == -1) end = shape.bmWidth;
    target.DeleteObject();
    CClientDC window(m_hWnd);
    CDC from;
    CDC to;
    if (!from.CreateCompatibleDC(&window) || !to.CreateCompatibleDC(&window) ||
        !target.CreateCompatibleBitmap(&window, shape.bmWidth, shape.bmHeight))
        return;
    const CSelection fromSelection(from, source);
    const CSelection toSelection(to, target);
    to.BitBlt(0, 0, shape.bmWidth, shape.bmHeight, &from, 0, 0, SRCCOPY);
    const COLORREF face = ::GetSysColor(COLOR_3DFACE);
    for (int x = first; x < end; ++x) {
        for (int y = 0; y < shape.bmHeight; ++y) {
            if (to.GetPixel(x, y) == kWhite) to.SetPixel(x, y, face);
        }
    }
}

// Makes a list of a strip in which these pictures are turned into their disabled forms, and shows it
// in the tree.
void ACheckTree::buildList(CImageList& list, UINT bitmapId, const int (&disabled)[3], int which) {
    list.DeleteImageList();
    list.Create(kSide, kSide, ILC_COLOR24, 10, 10);
    list.SetBkColor(::GetSysColor(COLOR_WINDOW));
    SetImageList(&list, which);
    CBitmap strips[4];  // each call works on the result of the one before
    if (!loadBitmap(bitmapId, strips[0])) return;
    for (int i = 0; i < 3; ++i)
        makeDisabledBitmap(strips[i], strips[i + 1], disabled[i] * kSide, (disabled[i] + 1) * kSide);
    list.Add(&strips[3], nullptr);
}

void ACheckTree::initImageLists() {
    DeleteAllItems();
    m_undrawn.clear();
    m_bitmaps.clear();  // in the colours of the system as they were
    buildList(m_stateImages, IDB_CHECK_BOXES, kStatePictures, TVSIL_STATE);
    buildList(m_itemImages, IDB_TREE_PICTURES, kItemPictures, TVSIL_NORMAL);
    m_pictureCount = m_itemImages.GetImageCount();
}

void ACheckTree::ReleaseReference::operator()(AReferItem* item) const {
    item->releaseReference();
}

// Gives the item the next picture, or its disabled form, as the control's state calls for.
void ACheckTree::addPicture(HTREEITEM item, Picture picture) {
    m_undrawn.push_back(std::move(picture));
    setImages(item, m_pictureCount + (IsWindowEnabled() ? 0 : 1));
    m_pictureCount += 2;
}

// False, with the list as it was, without memory for it.
bool ACheckTree::addPair(CBitmap& drawn) {
    CBitmap form;
    makeDisabledBitmap(drawn, form, 0, -1);
    const int place = m_itemImages.Add(&drawn, nullptr);
    if (place < 0) return false;
    if (m_itemImages.Add(&form, nullptr) >= 0) return true;
    m_itemImages.Remove(place);
    return false;
}

bool ACheckTree::drawPicture(const Picture& picture) {
    if (picture.bitmap) return addPair(*picture.bitmap);
    CBitmap swatch;
    return (picture.isColor ? drawColor(picture.color, swatch) : drawSwatch(picture.item.get(), swatch)) &&
           addPair(swatch);
}

// Draws what is missing up to a picture, in the order in which they were given. What there is no memory for is drawn
// when the tree is next painted: left out, it would give its place to the picture behind it.
void ACheckTree::drawPictures(int last) {
    while (!m_undrawn.empty() && m_itemImages.GetImageCount() <= last && drawPicture(m_undrawn.front()))
        m_undrawn.pop_front();
}

void ACheckTree::drawVisiblePictures() {
    if (m_undrawn.empty()) return;
    int last = -1;
    HTREEITEM item = GetFirstVisibleItem();
    for (UINT row = 0; item && row <= GetVisibleCount(); ++row, item = GetNextVisibleItem(item)) {
        int image = 0;
        int selectedImage = 0;
        GetItemImage(item, image, selectedImage);
        last = std::max({last, image, selectedImage});
    }
    drawPictures(last);
}

// Null when there is none of that id.
CBitmap* ACheckTree::findBitmap(UINT id) {
    const auto [place, isNew] = m_bitmaps.try_emplace(id);
    if (isNew) loadBitmap(id, place->second);
    return place->second.GetSafeHandle() ? &place->second : nullptr;
}

void ACheckTree::setItemImage(HTREEITEM item, int image) {
    if (hasChildren(item))
        setImages(item, I_IMAGECALLBACK);
    else
        setImages(item, image / 2 * 2 + (IsWindowEnabled() ? 0 : 1));
}

int ACheckTree::setItemBitmap(HTREEITEM item, UINT id) {
    if (hasChildren(item)) {
        setImages(item, I_IMAGECALLBACK);
        return 1;
    }
    CBitmap* bitmap = findBitmap(id);
    if (!bitmap) {
        setItemImage(item, 0);
        return 0;
    }
    addPicture(item, Picture{bitmap, false, 0, nullptr});
    return 1;
}

namespace {

void drawSample(ADevice& device, const AReferItem* brushOrPen, const RECT& area) {
    if (const auto* brush = dynamic_cast<const ABrushItem*>(brushOrPen)) {
        brush->drawSample(device, area);
    } else if (const auto* pen = dynamic_cast<const APenItem*>(brushOrPen)) {
        pen->drawSample(device, area);
    } else {
        device.DrawStart();
        device.Fill(AColor(::GetSysColor(COLOR_WINDOW)));
        device.DrawEnd();
    }
}

}  // namespace

void ACheckTree::setItemSwatch(HTREEITEM item, const AReferItem* brushOrPen) {
    if (hasChildren(item)) return setImages(item, I_IMAGECALLBACK);
    Picture picture;
    if (brushOrPen) {
        picture.item.reset(const_cast<AReferItem*>(brushOrPen));
        picture.item->addReference();
    }
    addPicture(item, std::move(picture));
}

void ACheckTree::setItemColor(HTREEITEM item, COLORREF color) {
    if (hasChildren(item)) return setImages(item, I_IMAGECALLBACK);
    addPicture(item, Picture{nullptr, true, color, nullptr});
}

bool ACheckTree::drawSwatch(const AReferItem* brushOrPen, CBitmap& picture) {
    // The sample is drawn from (2, 2) and copied from (3, 3) on, as the pixel between
    // belongs to the frame.
    constexpr RECT kDrawn{2, 2, 16, 14};
    constexpr RECT kCopied{3, 3, 16, 14};
    CDC display;
    CDC memory;
    if (!display.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr) || !memory.CreateCompatibleDC(&display) ||
        !loadBitmap(IDB_SWATCH_FRAME, picture))
        return false;
    const AScreenInfo screen(1.0);
    const ADevice shown(display, screen);
    ADevice* offscreen = KzGetDeviceMgr()->GetOffscreenDevice(shown, screen.screenToDrawing(kDrawn), 0);
    if (!offscreen) return true;  // the frame alone
    {
        const CSelection selection(memory, picture);
        ADevice device(memory, screen);
        drawSample(*offscreen, brushOrPen, kDrawn);
        const AFRect area = screen.screenToDrawing(kCopied);
        device.DrawStart();
        device.Fill(area, AColor(::GetSysColor(COLOR_WINDOW)));
        device.CopyBits(area, *offscreen, area, SRCCOPY);
        device.DrawEnd();
    }
    KzGetDeviceMgr()->ReleaseDevice(offscreen);
    return true;
}

bool ACheckTree::drawColor(COLORREF color, CBitmap& picture) {
    CClientDC window(m_hWnd);
    CDC memory;
    const CBrush background(::GetSysColor(COLOR_WINDOW));
    const CBrush foreground(color);
    if (!background.GetSafeHandle() || !foreground.GetSafeHandle() || !memory.CreateCompatibleDC(&window) ||
        !picture.CreateCompatibleBitmap(&window, kSide, kSide))
        return false;
    const CSelection selection(memory, picture);
    {
        const CSelection brush(memory, background);
        memory.PatBlt(0, 0, kSide, kSide, PATCOPY);
    }
    const CSelection brush(memory, foreground);
    // One column wider than the picture, so that the colour runs to the edge.
    memory.PatBlt(3, 2, 14, 12, PATCOPY);
    return true;
}
