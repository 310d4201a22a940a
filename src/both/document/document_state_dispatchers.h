// Read-only commands that answer from the current document alone: isCurrentDocModified,
// getFilePageCount, checkFilePermission. None reads its parameters.
#pragma once

#include "bridge/base_dispatcher.h"

class Brevan;

class IsCurrentDocModifiedDispatcher : public BaseDispatcher {
  public:
    explicit IsCurrentDocModifiedDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

class GetFilePageCountDispatcher : public BaseDispatcher {
  public:
    explicit GetFilePageCountDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

// Success when the document allows both copying content and changing annotations; otherwise 400027
// with the reason.
class CheckFilePermissionDispatcher : public BaseDispatcher {
  public:
    explicit CheckFilePermissionDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};
