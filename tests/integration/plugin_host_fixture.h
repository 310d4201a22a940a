// The plug-in loaded into pdfhost in this process, driven through the scripted session: each step
// is an input line, and the output lines it caused are returned parsed.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "automation/script_session.h"
#include "engine/pdf_factory.h"
#include "host_app.h"

class PluginHostTest : public testing::Test {
  protected:
    PluginHostTest();
    ~PluginHostTest() override;

    // Starts the host with the plug-in; `language` is the host's interface language.
    void Start(const std::string& language = "en-US");
    // Writes a brevan.config for the next Start.
    void WriteConfig(const std::string& text);

    // Handles one input line; returns the output lines it caused.
    std::vector<Json::Value> Line(const Json::Value& line);
    // Posts a text as the page; returns the raw texts of the replies it caused.
    std::vector<std::string> Post(const std::string& text);
    // Sends a "base" command with an identifier; returns the parsed reply (null if none).
    Json::Value Call(const std::string& command, const Json::Value& params = Json::objectValue,
                     const std::string& uuid = "it");

    using Entries = std::initializer_list<std::pair<const char*, Json::Value>>;
    static Json::Value Object(Entries entries);
    // Runs the host command `command` with `entries`; expects no error among its output lines.
    std::vector<Json::Value> Host(const std::string& command, Entries entries = {});
    // Writes a generated PDF into the test folder and opens it as the user does; returns its
    // path. Later searches look in it.
    std::string OpenPdf(const std::string& name, const pdfhost::engine::PdfDescription& recipe);
    // findTexts of `text` in the document opened last.
    Json::Value Find(const std::string& text);
    // addAnnot of match `index` of the search `key`.
    Json::Value AddAnnot(const Json::Value& key, int index, const std::string& type,
                         const std::string& name, const std::string& contents = {});
    // Finds `text` and marks its first match for redaction as `name`.
    void Mark(const std::string& text, const std::string& name);
    // Answers the confirmation with OK and applies the redactions `names`; returns the reply.
    Json::Value Apply(const std::vector<std::string>& names);
    // Saves the first document in place.
    void Save() { Host("save", {{"doc", 1}}); }
    // What poppler's pdftotext reads from `path`.
    static std::string PdfToText(const std::string& path);

    std::filesystem::path folder;
    std::filesystem::path profile;
    std::unique_ptr<pdfhost::HostApp> host;
    std::string fileId;  // of the document opened last by OpenPdf

  private:
    std::ostringstream out_;
    std::unique_ptr<pdfhost::ScriptSession> session_;
    std::size_t consumed_ = 0;
};
