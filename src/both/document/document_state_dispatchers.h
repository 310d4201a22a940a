// Read-only commands that answer from the current document alone: isCurrentDocModified,
// getFilePageCount, checkFilePermission. None reads its parameters.
#pragma once

#include "bridge/base_dispatcher.h"

struct DocumentServices;

class IsCurrentDocModifiedDispatcher : public BaseDispatcher {
  public:
    explicit IsCurrentDocModifiedDispatcher(const DocumentServices& services)
        : services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

class GetFilePageCountDispatcher : public BaseDispatcher {
  public:
    explicit GetFilePageCountDispatcher(const DocumentServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

// Success when the document allows both copying content and changing annotations; otherwise 400027
// with the reason.
class CheckFilePermissionDispatcher : public BaseDispatcher {
  public:
    explicit CheckFilePermissionDispatcher(const DocumentServices& services)
        : services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};
