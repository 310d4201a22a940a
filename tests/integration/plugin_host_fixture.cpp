#include "plugin_host_fixture.h"

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
    Json::Value line(Json::objectValue);
    line["post"] = text;
    std::vector<std::string> replies;
    for (const Json::Value& output : Line(line)) {
        if (output.isMember("reply"))
            replies.push_back(output["reply"].asString());
    }
    return replies;
}

Json::Value PluginHostTest::Call(const std::string& command, const Json::Value& params,
                                 const std::string& uuid) {
    Json::Value envelope(Json::arrayValue);
    envelope.append("base");
    envelope.append(command);
    envelope.append(params);
    envelope.append(uuid);
    const std::string text = WriteJson(envelope);
    const auto replies = Post(text.substr(0, text.size() - 1));
    Json::Value reply;
    if (replies.size() == 1)
        ParseJson(replies[0], reply);
    return reply;
}

int PluginHostTest::Open(const std::string& path) {
    Json::Value line(Json::objectValue);
    line["host"] = "open";
    line["path"] = path;
    for (const Json::Value& output : Line(line)) {
        if (output.isMember("opened"))
            return output["opened"].asInt();
    }
    return 0;
}

std::string PluginHostTest::MakePdf(const std::string& name,
                                    const pdfhost::engine::PdfDescription& recipe) {
    const std::string path = (folder / name).string();
    pdfhost::engine::PdfFactory(host->Engine()).Write(recipe, path);
    return path;
}
