// The search commands: findTexts (one text, or a passage split at page breaks) and findTextList
// (several texts, each with its own flags). Both walk the current document's pages through the
// host's finders and store what they find under new search keys.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bridge/base_dispatcher.h"
#include "host/host_abi.h"

struct RedactionServices;
class SearchResultStore;

// First and last page of a search, both inclusive.
struct PageRange {
    int first = 0;
    int last = 0;
};

// startPage and endPage of a request: a negative or absent one counts as the document's first or
// last page. Empty when the range does not lie in a document of `pageCount` pages.
std::optional<PageRange> RequestedRange(const Json::Value& params, int pageCount);

// The pages an ordinary search walks: the non-negative entries of a non-empty `pageList` in their
// order (repeats walked again; entries past the document skipped), else the range ascending.
std::vector<int> PagesToWalk(const Json::Value& params, const PageRange& range, int pageCount);

class FindTextsDispatcher : public BaseDispatcher {
  public:
    FindTextsDispatcher(const RedactionServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  protected:
    // The document a search runs on, with its page range.
    struct Target {
        HostDoc doc = nullptr;
        NdxDoc pdf = nullptr;
        int pageCount = 0;
        PageRange range;
    };
    // The checks of the current document and the range; 0 when they pass.
    int32_t FindTarget(const Json::Value& root, Target& target) const;
    // The store, or null once the plug-in has unloaded it.
    SearchResultStore* Store() const;

    const RedactionServices& services_;

  private:
    Json::Value RunOrdinary(const Json::Value& root, const Target& target,
                            const std::wstring& fileId);
    Json::Value RunSpanning(const Json::Value& root, const Target& target,
                            const std::wstring& fileId);
};

class FindTextListDispatcher : public FindTextsDispatcher {
  public:
    using FindTextsDispatcher::FindTextsDispatcher;
    Json::Value Run() override;
};
