// Answers queued for the dialogs of scripted mode, one queue per kind of dialog
// ("messageBox", "fileOpen", ...), each used once, oldest first.
#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>

#include <json/value.h>

namespace pdfhost {

class DialogAnswers {
  public:
    void Queue(const std::string& kind, Json::Value answer);
    // The oldest answer queued for `kind`, or nothing: the dialog is then cancelled.
    std::optional<Json::Value> Take(const std::string& kind);
    std::size_t Pending(const std::string& kind) const;

  private:
    std::map<std::string, std::deque<Json::Value>> queues_;
};

}  // namespace pdfhost
