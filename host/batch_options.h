// The options of a headless batch (pdfhost --batch): where the outputs go and how they are named,
// the user's terms, the report file and the part of an array job.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace pdfhost {

struct BatchOptions {
    std::string out;  // empty: beside each source
    std::optional<std::string> prefix;
    std::optional<std::string> suffix;
    bool overwrite = false;
    std::string terms;   // comma-separated
    std::string report;  // JSON report file; empty: none
    std::string shard;   // "I/N", "auto", or empty for all files
    std::string web;     // the reference page's folder; empty: the one built with pdfhost

    // The text added before and after the base name: "_redacted" after it when neither is
    // given.
    std::string Prefix() const { return prefix.value_or(""); }
    std::string Suffix() const { return suffix.value_or(prefix.has_value() ? "" : "_redacted"); }
};

// Reads `arg` when it is a batch option, taking its value through `value`; false for any other
// argument. Throws std::invalid_argument for a value a file name can't hold.
bool ReadBatchOption(const std::string& arg, const std::function<const std::string&()>& value,
                     BatchOptions& options);

}  // namespace pdfhost
