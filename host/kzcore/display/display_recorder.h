// ADisplayRecorder: makes a display list. The host tells which object comes, its format tells what is drawn.
//
//     recorder.beginObject(object);
//     recorder.fill(outline, toDrawing, paint, rule);      // as on a canvas, in drawing coordinates
//     recorder.openGroup(0.5);                             // until the matching close
//     recorder.stroke(outline, toDrawing, paint, style);
//     recorder.close();
//     recorder.endObject();
//
// Tiles cannot be recorded: what is painted with one asks for a picture.
#pragma once

#include <optional>
#include <unordered_map>

#include "kzcore/display/display_list.h"
#include "kzutil/flat_table.h"

class ADisplayRecorder {
public:
    explicit ADisplayRecorder(ADocument& document);

    void setPictureMaker(std::shared_ptr<APictureMaker> maker) { m_list->m_pictures = std::move(maker); }

    // An object without children; what is drawn until the end is its own.
    void beginObject(const AObject& object);
    void endObject();
    // The container whose content comes next. It draws nothing itself, but may need a picture.
    void beginContainer(const AObject& container) { m_container = &container; }

    // What is not finite draws nothing.
    void fill(const APath& path, const AAffine& toDrawing, const APaint& paint, EFillRule rule);
    void stroke(const APath& path, const AAffine& toDrawing, const APaint& paint, const AStrokeStyle& style);
    void fill(const ATextShape& text, const AAffine& toDrawing, const APaint& paint, EFillRule rule);
    void stroke(const ATextShape& text, const AAffine& toDrawing, const APaint& paint,
                const AStrokeStyle& style);
    // What is drawn belongs to this part, whatever it is; none: fills to the fill, strokes to the stroke.
    void setPart(std::optional<EPaintPart> part) { m_part = part; }

    void openGroup(double opacity);
    void pushClip(const APath& path, const AAffine& toDrawing, EFillRule rule);
    // The object, or else the container, or else the whole drawing is drawn by the format. `reach`: what that
    // can touch beside its content. To be closed like a group.
    void openPicture(const ABox& reach = ABox());
    // Ends what was opened last.
    void close();
    void drawAsOnePicture() { m_list->m_onePicture = true; }

    // What was done again and again, of what may be; see append().
    void noteRepeated(std::size_t elements, std::size_t most) {
        m_repeated = elements;
        m_mostRepeated = most;
    }
    // Nothing was recorded yet, and nothing is open.
    bool isUntouched() const { return m_list->m_entries.empty() && !isOpen() && !m_list->m_onePicture; }
    bool isOpen() const { return !m_open.empty(); }
    // What another recorder of the document recorded comes behind, as if it had been recorded here. Both recorded
    // objects of their own, nothing is open. False, and nothing happens, when together they repeated more than one
    // may. Raises bad_alloc: both are used up then.
    bool append(ADisplayRecorder&& other);

    // The list, complete; the recorder is used up.
    std::shared_ptr<const ADisplayList> finish();

private:
    struct Open {
        std::uint32_t group;  // around it
        ABox clip;            // what can be seen outside
        bool inPicture;       // whether what is opened lies in a container's picture
    };

    void open(const ADisplayGroup& group, const ABox& clip);
    template <class Outline>
    void addItem(const Outline& outline, const AAffine& toDrawing, const APaint& paint, std::uint32_t pen,
                 EFillRule rule, double reach);
    std::uint32_t transformNumber(const AAffine& toDrawing);
    ADisplayOutline keepOutline(const APath& path, const AAffine& toDrawing);
    ADisplayOutline keepOutline(const ATextShape& text, const AAffine& toDrawing);
    bool isText(const ADisplayOutline& outline, const ATextShape& text) const;
    const ADisplayTextLine& lettersOf(const std::shared_ptr<const ATextOutline>& text);
    std::uint32_t letterNumber(const std::shared_ptr<const ALetterOutline>& letter);
    ADisplayOutline appendOutline(const APath& path);
    ADisplayOutline sharedOutline(const APath& path);
    bool isOutline(const ADisplayOutline& outline, const APath& path) const;
    std::uint32_t paintNumber(const APaint& paint);
    std::uint32_t penNumber(const AStrokeStyle& style);
    void startEntry(std::uint32_t object);
    void wrapObject();
    void noteReferItems(const AObject& object);
    std::uint32_t referItemNumber(AReferItem* item);

    std::shared_ptr<ADisplayList> m_list;
    std::size_t m_repeated = 0, m_mostRepeated = 0;
    std::vector<Open> m_open;
    std::uint32_t m_current = kNoGroup;
    ABox m_clip = ABox::everything();
    bool m_inPicture = false;  // of a container
    std::optional<EPaintPart> m_part;
    const AObject* m_container = nullptr;

    const AObject* m_object = nullptr;
    bool m_entryOpen = false;
    bool m_objectNeedsPicture = false;
    ABox m_objectReach;
    std::uint32_t m_firstEntry = 0, m_firstGroup = 0;  // of the object

    const APath* m_lastPath = nullptr;  // whose outline was kept last, of this object
    ADisplayOutline m_lastOutline;
    ADisplayOutline m_lastText;

    struct KnownText {
        std::shared_ptr<const ATextOutline> text;  // held, so that no other takes its address
        ADisplayTextLine letters;
    };
    std::unordered_map<const ATextOutline*, KnownText> m_texts;
    std::unordered_map<const ALetterOutline*, std::uint32_t> m_letters;  // the list holds them

    // Long outlines by what they are: symbols come again and again.
    struct OutlineSlot {
        std::uint64_t hash = 0;
        ADisplayOutline outline;  // without verbs: free
        bool operator==(const OutlineSlot& other) const { return outline.verbs == other.outline.verbs; }
    };
    TFlatSlots<OutlineSlot> m_outlines;
    AFlatTable m_opaque;                                       // a colour's paint number and 1
    std::unordered_map<std::uint64_t, std::uint32_t> m_sheer;  // the same for colours that show through
    std::unordered_multimap<std::uint64_t, std::uint32_t> m_penNumbers;
    struct ReferSlot {
        AReferItem* item = nullptr;
        std::uint32_t number = 0;
        bool operator==(const ReferSlot&) const = default;
    };
    TFlatSlots<ReferSlot> m_referNumbers;
};
