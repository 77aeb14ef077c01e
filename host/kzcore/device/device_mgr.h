// The device manager: lends offscreen devices.
//
//     ADevice* offscreen = KzGetDeviceMgr()->GetOffscreenDevice(display, area, 0);
//     if (offscreen == nullptr) return;
//     item->drawSample(*offscreen, pixels);
//     memory.CopyBits(area, *offscreen, area, SRCCOPY);
//     KzGetDeviceMgr()->ReleaseDevice(offscreen);
#pragma once

#include "kzcore/device/device.h"

class ADeviceMgr {
public:
    // A device that holds the pixels of `rect` (drawing coordinates) in black, with the screen information of
    // `device`, so that the same coordinates mean the same place on both. Null for an empty rectangle and
    // without memory. `options` is the host's and always 0. To be given back with ReleaseDevice.
    ADevice* GetOffscreenDevice(const ADevice& device, const AFRect& rect, int options);
    // Null is fine.
    void ReleaseDevice(ADevice* device);
};

ADeviceMgr* KzGetDeviceMgr();
