// Read-only commands by which the page learns what is open: getCurrentDoc, getDocMetadata,
// getFileImagesType.
#pragma once

#include "bridge/base_dispatcher.h"

struct DocumentServices;

// The current document as an array of one file descriptor; registers it first if it is new.
class GetCurrentDocDispatcher : public BaseDispatcher {
  public:
    explicit GetCurrentDocDispatcher(const DocumentServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

// CreationDate and ModDate of the document named by file.id, as the file holds them.
class GetDocMetadataDispatcher : public BaseDispatcher {
  public:
    GetDocMetadataDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

// Whether the active document's pages are images only (1), a mix (2) or hold no image (0).
class GetFileImagesTypeDispatcher : public BaseDispatcher {
  public:
    explicit GetFileImagesTypeDispatcher(const DocumentServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};
