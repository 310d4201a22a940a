// A persistent two-level store (section -> key -> value) kept as one JSON file. Every change is
// written at once (temporary file, then rename), and the file is read when the store is made.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <json/value.h>

namespace pdfhost {

class SettingsStore {
  public:
    // Reads `file` if it exists; a missing or unreadable file gives an empty store.
    explicit SettingsStore(std::filesystem::path file);

    void SetInt(const std::string& section, const std::string& key, int value);
    void SetString(const std::string& section, const std::string& key, const std::string& value);

    // A number stored as text counts as a number; anything else gives nothing.
    std::optional<int> GetInt(const std::string& section, const std::string& key) const;
    // A number is given as its decimal text.
    std::optional<std::string> GetString(const std::string& section, const std::string& key) const;

    const std::filesystem::path& File() const { return file_; }

  private:
    void Set(const std::string& section, const std::string& key, Json::Value value);
    const Json::Value* Find(const std::string& section, const std::string& key) const;
    void Write() const;

    std::filesystem::path file_;
    Json::Value root_{Json::objectValue};
};

}  // namespace pdfhost
