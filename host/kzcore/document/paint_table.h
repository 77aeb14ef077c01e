// The colours, brushes and pens of one document: one shared item for each distinct colour, brush and pen, so
// that identity and equality agree.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "kzcore/document/refer_item.h"

class APaintTable {
public:
    APaintTable();
    ~APaintTable();  // releases the document's reference on every item
    APaintTable(const APaintTable&) = delete;
    APaintTable& operator=(const APaintTable&) = delete;

    // The RGB Color item of an sRGB value 0xRRGGBB, named by its CSS name or "#rrggbb".
    AColorItem* rgb(std::uint32_t value);
    // A colour of any class of the colour item class table. An empty name is replaced by one made of the
    // display colour. `display` is 0xRRGGBB.
    //
    // A name stands for one colour of its class: when another colour has it already, as when two swatches of a
    // drawing have one label, the new one is called name-2, name-3, ….
    AColorItem* color(const AClassInfo& colorClass, std::string_view name,
                      const AColorItem::Components& components, std::uint32_t display);

    // Holders. The solid brush of a colour; a brush of its own class, by name.
    ABrush* solidBrush(AColorItem* color);
    // The same for the RGB Color item of a value, the shortest way for the paint of a million objects. The
    // pen comes with its colour's brush.
    ABrush* rgbBrush(std::uint32_t value);
    APen* rgbPen(std::uint32_t value);
    ABrush* gradientBrush(std::string_view name);
    ABrush* patternBrush(std::string_view name);
    APen* pen(AColorItem* color);
    APen* brushPen(ABrushItem* brush);

    // Null when the document does not use the value.
    AColorItem* findRgb(std::uint32_t value) const;
    // The colours of other classes by name, without regard to ASCII case, in order of first use.
    std::vector<AColorItem*> findNamed(std::string_view name) const;

    // In order of first use.
    const std::vector<AColorItem*>& getColors() const;
    const std::vector<ABrushItem*>& getBrushes() const;

private:
    std::uint32_t rgbNumber(std::uint32_t value);

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
