// Repainting a part of a page after an annotation went: the page-space rectangle is turned into
// the view's device space corner by corner.
#pragma once

#include "host/host_api.h"

// (left, bottom) gives the device left and bottom, (right, top) the device right and top.
struct DeviceRect {
    int left = 0;
    int bottom = 0;
    int right = 0;
    int top = 0;
};

DeviceRect ToDevice(HostApi& host, HostPageView pageView, const NdxRect& rect);

void Repaint(HostApi& host, HostDocView view, const DeviceRect& rect);
