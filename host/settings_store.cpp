#include "settings_store.h"

#include <charconv>

#include "profile_json_file.h"

namespace pdfhost {

SettingsStore::SettingsStore(std::filesystem::path file)
    : file_(std::move(file)), root_(ReadProfileJson(file_, "settings")) {}

void SettingsStore::SetInt(const std::string& section, const std::string& key, int value) {
    Set(section, key, Json::Value(value));
}

void SettingsStore::SetString(const std::string& section, const std::string& key,
                              const std::string& value) {
    Set(section, key, Json::Value(value));
}

void SettingsStore::Set(const std::string& section, const std::string& key, Json::Value value) {
    Json::Value& group = root_[section];
    if (!group.isObject())
        group = Json::Value(Json::objectValue);
    group[key] = std::move(value);
    Write();
}

const Json::Value* SettingsStore::Find(const std::string& section, const std::string& key) const {
    const Json::Value* group = root_.find(section.data(), section.data() + section.size());
    if (group == nullptr || !group->isObject())
        return nullptr;
    return group->find(key.data(), key.data() + key.size());
}

std::optional<int> SettingsStore::GetInt(const std::string& section, const std::string& key) const {
    const Json::Value* value = Find(section, key);
    if (value == nullptr)
        return std::nullopt;
    if (value->isInt())
        return value->asInt();
    if (value->isString()) {
        const std::string text = value->asString();
        int number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc() && end == text.data() + text.size())
            return number;
    }
    return std::nullopt;
}

std::optional<std::string> SettingsStore::GetString(const std::string& section,
                                                    const std::string& key) const {
    const Json::Value* value = Find(section, key);
    if (value == nullptr)
        return std::nullopt;
    if (value->isString())
        return value->asString();
    if (value->isInt())
        return std::to_string(value->asInt());
    return std::nullopt;
}

void SettingsStore::Write() const {
    WriteProfileJson(file_, root_, "settings");
}

}  // namespace pdfhost
