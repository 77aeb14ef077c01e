// Builds a document from a parsed drawing.
//
// Decisions beyond the mapping of elements to classes (object_class.h):
// - Objects outside every layer go to one layer, "Layer 1" (or the first such number that no layer has). It
//   stands among the layers where the first such object stands in the drawing.
// - A "switch" is a group of the child that would be drawn: the first object without required extensions and
//   for no language or English.
// - A group with a class of a single object (a dimension) is that object; its content is how it is drawn.
// - What a layer hides is not marked as hidden one by one: showing the layer brings it back.
// - A "use" repeats what it refers to as its own objects, under made names. The number of repeated elements
//   is bounded; a "use" that contains itself is empty.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "formats/svg/import/names.h"
#include "formats/svg/import/paint_resolver.h"
#include "formats/svg/tree/object_class.h"
#include "formats/svg/tree/user_space.h"
#include "kzcore/document/document.h"

namespace svg {

class Importer {
public:
    Importer(ADocument& document, DrawingIndex& index);

    // `root`: the drawing's svg element; `space`: the user space of its content. False when the style sheets
    // cost too much, or when `goesOn`, asked now and then with the number of elements read, says so: the document is
    // not whole then.
    bool run(pugi::xml_node root, UserSpace& space, const std::function<bool(std::size_t)>& goesOn = {});

private:
    // A container whose children are being read.
    struct Frame {
        pugi::xml_node node;
        pugi::xml_node next;
        AParent* container;  // null at the top, outside every layer
        Style style;
        UserSpace space;
        std::size_t namespaces;
        bool single;  // only `next` itself, not what follows it
        bool repeating;
        bool moved;  // by a style, its own or one around
    };

    void read(pugi::xml_node node);
    void readLayer(pugi::xml_node node);
    void readObject(pugi::xml_node node, Element element);
    bool moves(const Style& style, Element element);
    void setContextPaint(AObject& object, const Style& style);
    void setGeometry(AObject& object, pugi::xml_node node, Element element, const Style& style, bool moved);
    void enterContainer(AParent& container, pugi::xml_node node, Element element, const Style& style,
                        bool moved);
    void enterUse(Frame frame);
    AObject* createObject(const AClassInfo& row, pugi::xml_node node, Element element);
    AParent& looseLayer();
    bool isShadow(std::string_view filter);
    bool spendRepeating(std::size_t nodes);
    AFRect contentBounds(pugi::xml_node node, const Style& style);

    ADocument& m_document;
    DrawingIndex& m_index;
    StyleResolver m_styles;
    PaintResolver m_paint;
    NameMaker m_names;
    ObjectClasses m_classes;
    Namespaces m_namespaces;
    AttributeSet m_attributes;  // of the element being read
    Style m_ownStyle;           // its style, when that differs from the container's
    std::vector<Frame> m_frames;
    pugi::xml_node m_root;
    ALayer* m_looseLayer = nullptr;
    std::size_t m_repeatable = 0;  // elements that may still be repeated by "use"
    std::string m_buffer;
};

}  // namespace svg
