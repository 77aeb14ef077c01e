// ADisplayList: a drawing as outlines and paints in drawing order, made once, drawn at any scale.
//
// An item is an outline that is filled or stroked; it belongs to the fill or to the stroke of an object. A run of
// items of one object inside one group is an entry, and has a box in the index. Groups have an opacity or a clip,
// and hold entries without gaps. What has to be computed at the resolution of the picture (filters, masks, patterns,
// images, blend modes) is a group with a picture: the format draws it whenever it is drawn, and its items only
// tell where its objects lie.
//
// Texts are letters in their places, whose outlines are there once for all texts.
//
// A list never changes, and any number of threads may read it. The document outlives it. Lengths and places are in
// drawing coordinates.
#pragma once

#include <memory>

#include "canvas/canvas.h"
#include "canvas/text_outline.h"
#include "kzcore/display/box_tree.h"
#include "kzcore/document/object_painter.h"

class ADocument;
class AObject;
class AReferItem;

constexpr std::uint32_t kNoGroup = 0xffffffff;

// An outline's place in the list's verbs and points. Without points: its place in the list's lines of text.
struct ADisplayOutline {
    std::uint32_t firstVerb = 0, verbs = 0;
    std::uint32_t firstPoint = 0, points = 0;
    std::uint32_t transform = 0;  // to drawing coordinates

    bool isText() const { return points == 0; }
};

struct ADisplayLetter {
    std::uint32_t outline = 0;  // in the list's outlines of letters
    AFPoint at;                 // added to its points
};

struct ADisplayTextLine {
    std::uint32_t firstLetter = 0, letters = 0;  // lines of the same text share them
    AAffine placed;                              // of the letters, in the item's coordinates
};

// Whose visibility an item follows.
enum class EPaintPart : std::uint8_t { fill, stroke };

struct ADisplayItem {
    ADisplayOutline outline;
    std::uint32_t paint = 0;
    std::uint32_t pen = 0;  // 0: a fill
    EPaintPart part = EPaintPart::fill;
    EFillRule rule = EFillRule::nonZero;  // of a fill
};

struct ADisplayEntry {
    std::uint32_t object = 0;     // its number in the document; 0: where a picture reaches
    std::uint32_t firstItem = 0;  // up to the next entry's
    std::uint32_t group = kNoGroup;
};

struct ADisplayClip {
    ADisplayOutline outline;
    EFillRule rule = EFillRule::nonZero;
};

struct ADisplayGroup {
    std::uint32_t parent = kNoGroup;
    std::uint32_t firstEntry = 0, endEntry = 0;
    double opacity = 1;                // below 1: the content is an image
    std::uint32_t clip = kNoGroup;     // none
    const AObject* picture = nullptr;  // a container or an object without children
};

struct ADisplayPaint {
    AColor color;
    std::uint32_t gradient = 0;  // 0: the colour
    double opacity = 1;          // of the gradient
};

// Draws objects at the resolution of a picture, for a format. From any thread, one after the other.
class APictureMaker {
public:
    virtual ~APictureMaker() = default;
    // A painter for objects below `around`'s own effects; null: for the whole drawing. What lies around it is not
    // drawn. It keeps others waiting until it is gone. Raises bad_alloc.
    virtual std::unique_ptr<AObjectPainter> start(ACanvas& canvas, const AAffine& toPixels,
                                                  const AObject* around) = 0;
};

class ADisplayList {
public:
    std::size_t entryCount() const { return m_entries.size(); }
    const ADisplayEntry& entry(std::uint32_t i) const { return m_entries[i]; }
    // The items of an entry are those from its first to this.
    std::uint32_t endOfItems(std::uint32_t entry) const {
        return entry + 1 < m_entries.size() ? m_entries[entry + 1].firstItem
                                            : static_cast<std::uint32_t>(m_items.size());
    }
    const ADisplayItem& item(std::uint32_t i) const { return m_items[i]; }
    const ADisplayGroup& group(std::uint32_t i) const { return m_groups[i]; }
    std::size_t groupCount() const { return m_groups.size(); }
    const ADisplayClip& clip(std::uint32_t i) const { return m_clips[i]; }
    const ADisplayPaint& paint(std::uint32_t i) const { return m_paints[i]; }
    const AGradient& gradient(std::uint32_t i) const { return m_gradients[i]; }
    const AStrokeStyle& pen(std::uint32_t i) const { return m_pens[i]; }
    const AAffine& transform(std::uint32_t i) const { return m_transforms[i]; }
    // Puts an outline into a path that is used again and again.
    void readOutline(const ADisplayOutline& outline, APath& path) const;

    // All that an entry can draw on, strokes included; a pixel's margin is the caller's.
    const ABox& box(std::uint32_t entry) const { return m_boxes[entry]; }
    const ABoxTree& tree() const { return m_tree; }
    // Null when nothing needs it.
    APictureMaker* pictures() const { return m_pictures.get(); }
    // The format draws the drawing as a whole: something in it blends, or its root has an effect.
    bool isOnePicture() const { return m_onePicture; }

    // By its number.
    const AObject& object(std::uint32_t number) const;

    // What a filter is asked about, none twice; the first is null, and shows. Of an object, by its number: 0
    // without a fill, else the item's place counted from 1.
    const std::vector<AReferItem*>& referItems() const { return m_referItems; }
    std::size_t objectCount() const { return m_fillItems.size(); }
    std::uint32_t fillItem(std::uint32_t object) const { return m_fillItems[object]; }
    std::uint32_t strokeItem(std::uint32_t object) const { return m_strokeItems[object]; }

    // Bytes besides the outlines' own verbs and points.
    std::size_t bytes() const;
    std::size_t outlineBytes() const;

private:
    friend class ADisplayRecorder;
    explicit ADisplayList(const ADocument& document) : m_document(document) {}

    const ADocument& m_document;
    std::vector<APath::EVerb> m_verbs;
    std::vector<AFPoint> m_points;
    std::vector<std::shared_ptr<const ALetterOutline>> m_letterOutlines;
    std::vector<ADisplayLetter> m_letters;
    std::vector<ADisplayTextLine> m_textLines;
    std::vector<ADisplayItem> m_items;
    std::vector<ADisplayEntry> m_entries;
    std::vector<ABox> m_boxes;  // of the entries
    std::vector<ADisplayGroup> m_groups;
    std::vector<ADisplayClip> m_clips;
    std::vector<ADisplayPaint> m_paints;
    std::vector<AGradient> m_gradients;  // the first stands for none; toPixels leads to drawing coordinates
    std::vector<AStrokeStyle> m_pens;    // the first stands for none
    std::vector<AAffine> m_transforms;
    ABoxTree m_tree;
    std::shared_ptr<APictureMaker> m_pictures;
    bool m_onePicture = false;
    std::vector<AReferItem*> m_referItems;
    std::vector<std::uint32_t> m_fillItems, m_strokeItems;  // by the object's number
};

// The list of a document, by the painter of its format; documents without one show their objects' boxes. Raises
// bad_alloc.
std::shared_ptr<const ADisplayList> makeDisplayList(ADocument& document);
// The same with so many threads, of which two are used; 0: those that are worth it.
std::shared_ptr<const ADisplayList> makeDisplayList(ADocument& document, unsigned threads);
