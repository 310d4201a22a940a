// pdfhost --batch: Batch Redaction without a window. The files are gathered and split as the
// options say, the plug-in's ribbon entry is pressed, its dialogs are answered from the options
// through the scripted mode's answers, and its batch page (the reference page in the embedded
// browser) runs the batch. What the editor sees of each document (the Redact annotations applied
// and the copy saved) makes the report.
#pragma once

#include <filesystem>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include <json/value.h>

#include "batch_options.h"
#include "batch_report.h"
#include "batch_watch.h"

namespace pdfhost {

class HostApp;

class HeadlessBatch : public BatchWatch {
  public:
    // `paths` are files and folders; `defaultWeb` is the reference page's folder unless the
    // options name one.
    HeadlessBatch(HostApp& app, BatchOptions options, std::vector<std::string> paths,
                  std::filesystem::path defaultWeb);
    ~HeadlessBatch() override;
    HeadlessBatch(const HeadlessBatch&) = delete;
    HeadlessBatch& operator=(const HeadlessBatch&) = delete;

    // Runs the batch (loading the plug-ins and unloading them at the end), prints the report on
    // `out` and writes the JSON report when asked. Gives 0 when every file was redacted, 1 when
    // some failed, 2 for bad usage (a shard that doesn't exist, an output folder that can't be
    // made).
    int Run(std::ostream& out, std::ostream& errors);

    void RedactionsApplied(const std::string& source,
                           const std::vector<std::string>& names) override;
    void SavedAs(const std::string& source, const std::string& target, bool saved) override;

  private:
    // The files that go to the plug-in; the others are reported failed already.
    std::vector<std::string> Prepare(const std::vector<std::string>& files);
    void WriteConfiguration();
    void QueueAnswers(const std::vector<std::string>& files);
    void Listen(const Json::Value& line);
    void PressBatchRedact(std::size_t files, std::ostream& errors);
    bool WriteReport(std::ostream& errors) const;

    HostApp& app_;
    BatchOptions options_;
    std::vector<std::string> paths_;
    std::filesystem::path web_;
    std::string outFolder_;
    BatchWatch* previousWatch_;
    // Per file, in sorted order, and where each one's entry is.
    std::vector<BatchFileReport> reports_;
    std::map<std::string, std::size_t> index_;
    std::map<std::string, std::string> refused_;  // by path: the file list's error text
    std::vector<std::string> failedByPage_;
    std::map<std::string, std::string> unsaved_;  // by path: the output that could not be written
    bool fileListShown_ = false;
    bool timedOut_ = false;
};

}  // namespace pdfhost
