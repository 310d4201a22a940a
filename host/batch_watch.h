// What a headless batch watches of the documents it works on: the Redact annotations applied to
// each (by their names) and the copies saved under new paths. At most one watch lives at a time;
// the editor tells it when there is one.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace pdfhost {

class BatchWatch {
  public:
    virtual ~BatchWatch() = default;
    // Redact annotations named `names` (their /NM texts, empty when unnamed) were applied to the
    // document of file `source`.
    virtual void RedactionsApplied(const std::string& source,
                                   const std::vector<std::string>& names) = 0;
    // The document of file `source` was saved to `target`; `saved` tells whether it worked.
    virtual void SavedAs(const std::string& source, const std::string& target, bool saved) = 0;
};

// The living watch, or null.
BatchWatch* CurrentBatchWatch();
// Makes `watch` the living one (null: none) and gives the one before.
BatchWatch* SetCurrentBatchWatch(BatchWatch* watch);

// The findings by kind of a set of applied annotations: a name
// "ai_plugin_redact_<kind>_<rest>" counts for <kind> when the kind is letters and digits only;
// other names do not count.
std::map<std::string, int> FindingsByKind(const std::vector<std::string>& names);

}  // namespace pdfhost
