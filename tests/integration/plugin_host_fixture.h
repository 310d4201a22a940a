// The plug-in loaded into pdfhost in this process, driven through the scripted session: each step
// is an input line, and the output lines it caused are returned parsed.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
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
    // Opens a file as the user does; returns the host's document number (0 on failure).
    int Open(const std::string& path);
    // Writes a generated PDF into the test folder.
    std::string MakePdf(const std::string& name, const pdfhost::engine::PdfDescription& recipe);

    std::filesystem::path folder;
    std::filesystem::path profile;
    std::unique_ptr<pdfhost::HostApp> host;

  private:
    std::ostringstream out_;
    std::unique_ptr<pdfhost::ScriptSession> session_;
    std::size_t consumed_ = 0;
};
