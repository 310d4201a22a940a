// Notes pinned to a point of a page, apart from any match: addAnnotAtPoint makes one (with its
// popup), getAnnotsContentAtPoint reads the notes standing exactly at a point, and
// removeAnnotsAtPoint removes them. They act on the document that `file.id` names; the store is
// not involved, only the note's position and the prefix of its /NM tie it to this system.
#pragma once

#include <optional>
#include <string>

#include "bridge/base_dispatcher.h"
#include "host/host_abi.h"

struct RedactionServices;
class HostApi;

// Where a point-note request points, once its checks have passed. The request's point (x, y)
// counts y down from the top of the media box, whose upper y is `pageTop`.
struct NotePlace {
    HostDoc doc = nullptr;
    NdxDoc pdf = nullptr;
    int page = 0;
    float x = 0;
    float y = 0;
    HostDocView view = nullptr;
    HostPageView pageView = nullptr;
    NdxObject pageDict = nullptr;
    NdxObject mediaBox = nullptr;
    float pageTop = 0;
};

// The arguments shared by the three commands, read and checked in their order.
class PointNoteRequest {
  public:
    enum class Kind { kNewNote, kExistingNotes };

    // 0 when every check passes; otherwise the code of the first that fails.
    int32_t Read(const RedactionServices& services, const CommandParams& params, Kind kind);

    NotePlace place;
    std::wstring contents;  // of a new note
    std::wstring name;      // the new note's uniqueIDName, or the uniqueIDPrefix to look for
};

// The rectangle of a page-view annotation that is a note of this system standing exactly at the
// place's point, with /NM beginning with `prefix`; empty for any other annotation.
std::optional<NdxRect> NoteAt(HostApi& host, HostAnnot annot, const NotePlace& place,
                              const std::wstring& prefix);

class AddAnnotAtPointDispatcher : public BaseDispatcher {
  public:
    AddAnnotAtPointDispatcher(const RedactionServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const RedactionServices& services_;
};

class GetAnnotsContentAtPointDispatcher : public BaseDispatcher {
  public:
    GetAnnotsContentAtPointDispatcher(const RedactionServices& services,
                                      const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const RedactionServices& services_;
};

class RemoveAnnotsAtPointDispatcher : public BaseDispatcher {
  public:
    RemoveAnnotsAtPointDispatcher(const RedactionServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const RedactionServices& services_;
};
