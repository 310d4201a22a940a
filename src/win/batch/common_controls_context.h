// Version 6 of the common controls for the dialogs this module makes: the module's own manifest
// activated on this thread for the owner's lifetime, since the host's may name an older version.
// Where the manifest can't be activated the system's default controls are used.
#pragma once

#include <windows.h>

class CommonControlsContext {
  public:
    CommonControlsContext();
    ~CommonControlsContext();
    CommonControlsContext(const CommonControlsContext&) = delete;
    CommonControlsContext& operator=(const CommonControlsContext&) = delete;

  private:
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};
