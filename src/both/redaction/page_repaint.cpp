#include "page_repaint.h"

DeviceRect ToDevice(HostApi& host, HostPageView pageView, const NdxRect& rect) {
    DeviceRect device;
    const NdxPoint lowerLeft{rect.left, rect.bottom};
    const NdxPoint upperRight{rect.right, rect.top};
    host.HostPageViewPointToDevice(pageView, &lowerLeft, &device.left, &device.bottom);
    host.HostPageViewPointToDevice(pageView, &upperRight, &device.right, &device.top);
    return device;
}

void Repaint(HostApi& host, HostDocView view, const DeviceRect& rect) {
    host.HostDocViewInvalidateRect(view, rect.left, rect.top, rect.right, rect.bottom);
}
