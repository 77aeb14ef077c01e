#include "kzcore/device/device_mgr.h"

#include <memory>

#include "kzcore/device/pixel_section.h"

namespace {

class OffscreenDevice : public ADevice {
public:
    OffscreenDevice(std::unique_ptr<APixelSection> section, const AScreenInfo& screen, POINT origin)
        : ADevice(section->getContext(), screen, origin), m_section(std::move(section)) {}
    ~OffscreenDevice() override { closeCanvas(); }

private:
    APixelSection* getSection() override { return m_section.get(); }

    std::unique_ptr<APixelSection> m_section;
};

}  // namespace

ADevice* ADeviceMgr::GetOffscreenDevice(const ADevice& device, const AFRect& rect, int) {
    RECT pixels = device.getScreenInfo().drawingToScreen(rect);
    auto section = std::make_unique<APixelSection>(pixels.right - pixels.left, pixels.bottom - pixels.top);
    if (!section->isValid()) return nullptr;
    return new OffscreenDevice(std::move(section), device.getScreenInfo(), POINT{pixels.left, pixels.top});
}

void ADeviceMgr::ReleaseDevice(ADevice* device) {
    delete device;
}

ADeviceMgr* KzGetDeviceMgr() {
    static ADeviceMgr manager;
    return &manager;
}
