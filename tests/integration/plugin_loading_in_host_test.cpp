// The plug-in in pdfhost: the log its configuration can turn on, and what its library exports.
#include <dlfcn.h>

#include <fstream>
#include <iterator>

#include "plugin_host_fixture.h"

namespace {

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream in(path);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST_F(PluginHostTest, LoggerWritesRequestsAndRepliesWhenTheConfigurationAsks) {
    const auto logs = folder / "logs";
    WriteConfig(R"({"logger_output": true, "logger_path": ")" + logs.string() + R"("})");
    Start();
    Post(R"(["base","getCurrentDoc","","x"])");
    Post(R"(["base","isCurrentDocModified",{"a":1},"y"])");
    Post(R"(["base","getDocMetadata",{"a":1},"z"])");
    Line(Json::Value(Json::objectValue));  // a line the session cannot use; the host goes on
    Json::Value quit(Json::objectValue);
    quit["host"] = "quit";
    Line(quit);  // unloads the plug-in; the logger's queue is written at library unload

    std::string all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(logs)) {
        if (entry.is_regular_file())
            all += ReadAll(entry.path());
    }
    EXPECT_NE(all.find("[INFO] Get Dispatch getCurrentDoc input:  "), std::string::npos) << all;
    EXPECT_NE(all.find("[INFO] Dispatch isCurrentDocModified  output : "
                       "{\"data\":null,\"ret\":300001,\"uuid\":\"y\"}"),
              std::string::npos)
        << all;
    // A command that takes no parameters drops them unseen; one that takes them logs them.
    EXPECT_NE(all.find("Get Dispatch isCurrentDocModified input:  \n"), std::string::npos) << all;
    EXPECT_NE(all.find("Get Dispatch getDocMetadata input:  {\"a\":1}"), std::string::npos) << all;
}

TEST(PluginLibraryTest, ExportsOnlyItsEntryAndCarriesNoPdfEngine) {
    const std::string path = std::string(BREVAN_PLUGIN_DIR) + "/TarvoSablemark.tpi";
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_NE(dlsym(library, "PlugInMain"), nullptr);
    EXPECT_EQ(dlsym(library, "fz_new_context_imp"), nullptr);
    EXPECT_EQ(dlsym(library, "_ZN6Brevan4InitEv"), nullptr);  // internals stay hidden
    dlclose(library);
    const std::string bytes = ReadAll(path);
    EXPECT_EQ(bytes.find("fz_new_context"), std::string::npos);
    EXPECT_EQ(bytes.find("libmupdf"), std::string::npos);
}

}  // namespace
