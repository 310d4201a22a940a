#include "profile.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace pdfhost {
namespace {

std::filesystem::path MakeTemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "pdfhost-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot make a temporary profile folder in " +
                                 std::filesystem::temp_directory_path().string());
    }
    return pattern;
}

}  // namespace

Profile::Profile(std::filesystem::path folder) {
    if (folder.empty()) {
        folder_ = MakeTemporaryFolder();
        temporary_ = true;
    } else {
        folder_ = std::filesystem::absolute(folder);
    }
    std::error_code error;
    std::filesystem::create_directories(UserDataFolder(), error);
    if (error) {
        throw std::runtime_error("cannot create profile folder " + UserDataFolder().string() +
                                 ": " + error.message());
    }
}

Profile::~Profile() {
    if (!temporary_)
        return;
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

}  // namespace pdfhost
