// Items that objects refer to and share: colours, brushes and pens.
//
// Items are counted: created at 1, which belongs to the document; whoever keeps one beyond the call that
// handed it over adds a reference and releases it later. The last release deletes the item.
#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "canvas/color.h"
#include "kzcore/document/class_info.h"
#include "kzutil/root.h"

class ADevice;

class AReferItem : public ARoot {
public:
    AReferItem(const AClassInfo& classInfo, AString name);
    AReferItem(const AReferItem&) = delete;
    AReferItem& operator=(const AReferItem&) = delete;

    const AString& getClassName() const override { return m_class->name; }
    const AClassInfo& getClassInfo() const { return *m_class; }
    // Lives as long as the item.
    virtual const AString& getName() const { return m_name; }
    // Non-zero when the other item, of whatever class, stands for the same thing.
    virtual int isEqual(const AReferItem* other) const;

    int addReference() { return ++m_references; }
    // Returns the count that is left; at 0 the item is gone.
    int releaseReference();
    int getReferenceCount() const { return m_references; }

protected:
    ~AReferItem() override = default;

    mutable AString m_name;  // a class may make it late

private:
    const AClassInfo* m_class;
    int m_references = 1;
};

// A colour. One C++ class serves the rows of the colour item class table; components are in 0..1,
// unused ones 0: red, green, blue; cyan, magenta, yellow, black; gray; tint of a spot colour (whose
// name is its identity).
class AColorItem : public AReferItem {
public:
    using Components = std::array<float, 4>;

    // `display` is the colour as a screen shows it. An empty name stands for that of the display colour:
    // its CSS name or "#rrggbb". It is made when first asked for, as a drawing has more colours than
    // anyone looks at.
    AColorItem(const AClassInfo& classInfo, AString name, const Components& components, COLORREF display);

    const Components& getComponents() const { return m_components; }
    COLORREF getDisplayColor() const { return m_display; }
    const AString& getName() const override;

    // Non-zero for the same class and the same components (spot colours: and the same name); opacity belongs
    // to objects, not to colours.
    virtual int isSameColor(const AColorItem* other) const;
    int isEqual(const AReferItem* other) const override;

private:
    friend class APaintTable;

    Components m_components;
    COLORREF m_display;
    std::uint32_t m_number = 0;  // in its document's paint table
};

class ABrushItem : public AReferItem {
public:
    using AReferItem::AReferItem;

    // Fills the area, in screen pixels, with a sample of the brush: what a list shows beside its name. An
    // item that has nothing to show leaves the colour of windows.
    virtual void drawSample(ADevice& device, const RECT& area) const;
};

// A fill with one colour. Keeps a reference on it.
class ASolidBrushItem : public ABrushItem {
public:
    explicit ASolidBrushItem(AColorItem* color);
    static const AString& stgetClassName();

    AColorItem* getColorItem() const { return m_color; }
    const AString& getName() const override;
    void drawSample(ADevice& device, const RECT& area) const override;

protected:
    ~ASolidBrushItem() override;

private:
    AColorItem* m_color;
};

class AGradientBrushItem : public ABrushItem {
public:
    explicit AGradientBrushItem(AString name);

    // In rising order of their offsets. Without stops, the sample runs from black to white.
    const std::vector<AGradientStop>& getStops() const { return m_stops; }
    void setStops(std::vector<AGradientStop> stops) { m_stops = std::move(stops); }
    void drawSample(ADevice& device, const RECT& area) const override;

private:
    std::vector<AGradientStop> m_stops;
};

class APatternBrushItem : public ABrushItem {
public:
    explicit APatternBrushItem(AString name);
    // Hatching, the same for every pattern.
    void drawSample(ADevice& device, const RECT& area) const override;
};

// What a stroke is made of: a colour, or a brush (a gradient stroke), or neither. Keeps a reference on it.
class APenItem : public AReferItem {
public:
    // The style of a pen that draws nothing.
    static constexpr int kStyleNone = 5;
    static constexpr int kStyleSolid = 0;

    APenItem(int style, AColorItem* color, ABrushItem* brush);
    static const AString& stgetClassName();

    int getStyle() const { return m_style; }
    AColorItem* getColorItem() const { return m_color; }
    ABrushItem* getBrushItem() const { return m_brush; }
    const AString& getName() const override;
    // A level stroke across the middle of the area, a third as high, on the colour of windows.
    void drawSample(ADevice& device, const RECT& area) const;

protected:
    ~APenItem() override;

private:
    int m_style;
    AColorItem* m_color;
    ABrushItem* m_brush;
};

// What an object's fill accessor gives: a holder of the brush item (which may be null). Owned
// by the document.
class ABrush {
public:
    explicit ABrush(ABrushItem* item) : m_item(item) {}
    ABrushItem* getBrushItem() const { return m_item; }

private:
    ABrushItem* m_item;
};

// What an object's pen accessor gives: a holder of the pen item (which may be null). Owned by the document.
class APen {
public:
    explicit APen(APenItem* item) : m_item(item) {}
    APenItem* getPenItem() const { return m_item; }

private:
    APenItem* m_item;
};
