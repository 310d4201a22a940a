// AttachedPlugin: the plug-in application bound to a host and a FakePlatform, as the host's
// handshake leaves it, for programs that drive its commands outside the unit tests' fixture.
#pragma once

#include "app/brevan.h"
#include "fake_platform.h"

struct AttachedPlugin {
    explicit AttachedPlugin(HostApi& host) { app.Attach(host, platform); }

    FakePlatform platform;
    Brevan app;
};
