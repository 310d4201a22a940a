#include "plugin_host_fixture.h"

#include <array>
#include <cstdio>
#include <fstream>

#include "bridge/json_text.h"
#include "self_test_report.h"

namespace {

std::string TestName() {
    const auto* info = testing::UnitTest::GetInstance()->current_test_info();
    return info != nullptr ? std::string(info->test_suite_name()) + "." + info->name() : "";
}

}  // namespace

PluginHostTest::PluginHostTest() {
    folder = std::filesystem::path(testing::TempDir()) /
             ("plugin-host-" + std::to_string(::getpid()) + "-" + TestName());
    std::filesystem::remove_all(folder);
    profile = folder / "profile";
    std::filesystem::create_directories(profile);
}

PluginHostTest::~PluginHostTest() {
    if (session_)
        session_->HandleLine(R"({"host":"quit"})");
    session_.reset();
    host.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void PluginHostTest::Start(const std::string& language) {
    pdfhost::HostOptions options;
    options.profile = profile;
    options.plugins = BREVAN_PLUGIN_DIR;
    options.language = language;
    options.headless = true;
    host = std::make_unique<pdfhost::HostApp>(options);
    session_ = std::make_unique<pdfhost::ScriptSession>(*host, out_);
    host->LoadPlugins();
}

void PluginHostTest::WriteConfig(const std::string& text) {
    const auto service = profile / "userdata" / "sblm.io";
    std::filesystem::create_directories(service);
    std::ofstream(service / "brevan.config") << text;
}

std::vector<Json::Value> PluginHostTest::Line(const Json::Value& line) {
    const std::string input = WriteJson(line);
    session_->HandleLine(input.substr(0, input.size() - 1));
    const std::string all = out_.str();
    const std::string caused = all.substr(consumed_);
    consumed_ = all.size();
    ReportExchange(TestName(), input.substr(0, input.size() - 1), caused);

    std::vector<Json::Value> lines;
    std::istringstream stream(caused);
    for (std::string text; std::getline(stream, text);) {
        Json::Value value;
        EXPECT_TRUE(ParseJson(text, value)) << text;
        lines.push_back(value);
    }
    return lines;
}

std::vector<std::string> PluginHostTest::Post(const std::string& text) {
    std::vector<std::string> replies;
    for (const Json::Value& output : Line(Object({{"post", text}}))) {
        if (output.isMember("reply"))
            replies.push_back(output["reply"].asString());
    }
    return replies;
}

Json::Value PluginHostTest::Call(const std::string& command, const Json::Value& params,
                                 const std::string& uuid) {
    Json::Value envelope(Json::arrayValue);
    for (const Json::Value& part :
         {Json::Value("base"), Json::Value(command), params, Json::Value(uuid)})
        envelope.append(part);
    const std::string text = WriteJson(envelope);
    const auto replies = Post(text.substr(0, text.size() - 1));
    Json::Value reply;
    if (replies.size() == 1)
        ParseJson(replies[0], reply);
    return reply;
}

Json::Value PluginHostTest::Object(Entries entries) {
    Json::Value object(Json::objectValue);
    for (const auto& [key, value] : entries)
        object[key] = value;
    return object;
}

std::vector<Json::Value> PluginHostTest::Host(const std::string& command, Entries entries) {
    Json::Value line = Object(entries);
    line["host"] = command;
    const std::vector<Json::Value> output = Line(line);
    for (const Json::Value& value : output)
        EXPECT_FALSE(value.isMember("error")) << value;
    return output;
}

std::string PluginHostTest::OpenPdf(const std::string& name,
                                    const pdfhost::engine::PdfDescription& recipe) {
    const std::string path = (folder / name).string();
    pdfhost::engine::PdfFactory(host->Engine()).Write(recipe, path);
    int opened = 0;
    for (const Json::Value& output : Host("open", {{"path", path}})) {
        if (output.isMember("opened"))
            opened = output["opened"].asInt();
    }
    EXPECT_GT(opened, 0);
    fileId = Call("getCurrentDoc")["data"][0]["id"].asString();
    return path;
}

Json::Value PluginHostTest::Find(const std::string& text) {
    return Call("findTexts", Object({{"file", Object({{"id", fileId}})}, {"text", text}}));
}

Json::Value PluginHostTest::AddAnnot(const Json::Value& key, int index, const std::string& type,
                                     const std::string& name, const std::string& contents) {
    Json::Value params =
        Object({{"searchKey", key}, {"index", index}, {"type", type}, {"uniqueIDName", name}});
    if (!contents.empty())
        params["contents"] = contents;
    return Call("addAnnot", params);
}

void PluginHostTest::Mark(const std::string& text, const std::string& name) {
    const Json::Value found = Find(text);
    ASSERT_GE(found["data"]["count"].asInt(), 1) << found;
    ASSERT_EQ(AddAnnot(found["data"]["searchKey"], 0, "redact", name)["ret"].asInt(), 0);
}

Json::Value PluginHostTest::Apply(const std::vector<std::string>& names) {
    Host("answer", {{"dialog", "messageBox"}, {"value", 1}});
    Json::Value params = Object({{"uniqueIDNames", Json::arrayValue}});
    for (const std::string& name : names)
        params["uniqueIDNames"].append(name);
    return Call("redactApply", params);
}

std::string PluginHostTest::PdfToText(const std::string& path) {
    std::string text;
    if (FILE* pipe = popen(("pdftotext '" + path + "' - 2>/dev/null").c_str(), "r")) {
        std::array<char, 4096> buffer{};
        while (std::size_t n = fread(buffer.data(), 1, buffer.size(), pipe))
            text.append(buffer.data(), n);
        pclose(pipe);
    }
    return text;
}
