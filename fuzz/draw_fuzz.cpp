// Reads the input as a drawing, draws it, and writes it without what a filter hides.
#include <cstdint>
#include <string>

#include "formats/svg/reader.h"
#include "formats/svg/writer.h"
#include "kzcore/device/device.h"
#include "kzcore/device/pixel_section.h"
#include "kzcore/view/view.h"

namespace {

// Hides every other item, in the order of asking.
class EveryOther : public AViewFilter {
public:
    int isVisible(AReferItem*) override { return ++m_asked & 1; }

private:
    unsigned m_asked = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string error;
    const auto document =
        svg::readDrawingBytes({reinterpret_cast<const char*>(data), size}, "fuzz.svg", error);
    if (!document) return 0;
    APixelSection section(64, 48);
    ADevice device(section.getContext(), AScreenInfo(1.0));
    ADocView view(*document);
    view.draw(device, AAffine::scaling(0.7));
    view.setViewFilter(new EveryOther);
    view.draw(device, AAffine{0.5, 0.3, -0.3, 0.5, 20, 3});

    EveryOther filter;
    const auto written = svg::writeDrawing(*document, &filter, error);
    // What was written is a drawing.
    if (written && !svg::readDrawingBytes(*written, "written.svg", error)) __builtin_trap();
    return 0;
}
