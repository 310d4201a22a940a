#include "settings_store.h"

#include <charconv>
#include <fstream>
#include <iostream>

#include <json/reader.h>
#include <json/writer.h>

namespace pdfhost {

SettingsStore::SettingsStore(std::filesystem::path file) : file_(std::move(file)) {
    std::ifstream in(file_, std::ios::binary);
    if (!in)
        return;
    Json::CharReaderBuilder builder;
    Json::Value parsed;
    std::string errors;
    if (!Json::parseFromStream(builder, in, &parsed, &errors) || !parsed.isObject()) {
        std::cerr << "pdfhost: ignoring unreadable settings file " << file_ << ": " << errors
                  << '\n';
        return;
    }
    root_ = parsed;
}

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
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "  ";
    builder["emitUTF8"] = true;
    std::filesystem::path temporary = file_;
    temporary += ".tmp";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out << Json::writeString(builder, root_) << '\n';
        if (!out) {
            std::cerr << "pdfhost: cannot write settings file " << temporary << '\n';
            return;
        }
    }
    std::error_code error;
    std::filesystem::rename(temporary, file_, error);
    if (error)
        std::cerr << "pdfhost: cannot replace " << file_ << ": " << error.message() << '\n';
}

}  // namespace pdfhost
