// Read-only commands by which the page learns what is open: getCurrentDoc, getDocMetadata,
// getFileImagesType.
#pragma once

#include "bridge/base_dispatcher.h"

class Brevan;

// The current document as an array of one file descriptor; registers it first if it is new.
class GetCurrentDocDispatcher : public BaseDispatcher {
  public:
    explicit GetCurrentDocDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

// CreationDate and ModDate of the document named by file.id, as the file holds them.
class GetDocMetadataDispatcher : public BaseDispatcher {
  public:
    GetDocMetadataDispatcher(Brevan& app, const CommandParams& params)
        : BaseDispatcher(params), app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

// Whether the active document's pages are images only (1), a mix (2) or hold no image (0).
class GetFileImagesTypeDispatcher : public BaseDispatcher {
  public:
    explicit GetFileImagesTypeDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};
