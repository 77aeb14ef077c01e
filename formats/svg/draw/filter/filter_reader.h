// Reads a filter element for one element at one resolution.
#pragma once

#include <map>

#include "formats/svg/draw/filter/filter_graph.h"

namespace svg {

class FilterReader {
public:
    FilterReader(DrawContext& context, const FilterArea& area, pugi::xml_node filter);

    // Empty, so that nothing is seen of the element, when the filter has no steps or no region.
    FilterGraph read();

private:
    using Read = void (FilterReader::*)(FilterStep& step);
    struct Primitive {
        std::string_view name;
        int inputs;
        Read read;
    };
    static const Primitive kPrimitives[];

    void readStep(const Primitive& primitive);
    int inputOf(pugi::xml_node node, const char* attribute) const;
    // What a step is cut to, in user space. `around`: where it says nothing.
    AFRect subregion(const AFRect& around) const;
    AFRect usualRegion(const FilterStep& step) const;

    void readBlend(FilterStep& step);
    void readColorMatrix(FilterStep& step);
    void readTransfer(FilterStep& step);
    void readComposite(FilterStep& step);
    void readConvolve(FilterStep& step);
    void readLighting(FilterStep& step);
    void readDisplacement(FilterStep& step);
    void readDropShadow(FilterStep& step);
    void readFlood(FilterStep& step);
    void readBlur(FilterStep& step);
    void readMerge(FilterStep& step);
    void readMorphology(FilterStep& step);
    void readOffset(FilterStep& step);
    void readTile(FilterStep& step);
    void readTurbulence(FilterStep& step);
    void readImage(FilterStep& step);
    void readNothing(FilterStep& step);

    double number(const char* name, double missing = 0) const;
    // One or two numbers.
    AFPoint pair(const char* name, AFPoint missing) const;
    std::string_view word(const char* name) const;
    // From the primitives' units to pixels: a direction, and extents along the axes.
    AFPoint vectorInPixels(AFPoint vector) const;
    AFPoint sizeInPixels(AFPoint size) const;

    DrawContext& m_context;
    const FilterArea& m_area;
    pugi::xml_node m_filter;
    pugi::xml_node m_node;  // the primitive being read
    Style m_style;          // its style
    Affine m_fromUnit;      // from the unit square to the box
    bool m_hasBox;
    bool m_boxPrimitives;  // their numbers are parts of the box
    AFPoint m_scale;       // pixels to the user unit
    AFRect m_region;       // in user space
    FilterGraph m_graph;
    std::vector<AFRect> m_regions;  // of the steps, in user space
    std::map<std::string_view, int> m_names;
};

}  // namespace svg
