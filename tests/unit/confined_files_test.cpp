// The containment check on its own, apart from the name check that usually comes first: a target
// whose last component is "." or ".." names the folder it stands in, or its parent, never a file
// inside the root.
#include <gtest/gtest.h>

#include <filesystem>

#include "util/confined_files.h"

namespace {

namespace fs = std::filesystem;

TEST(ConfinedFilesTest, IsInsideRefusesTheRootItselfAndWhatLeadsOutOfIt) {
    const fs::path root = fs::path(testing::TempDir()) / "confined-root";
    fs::create_directories(root / "sub");
    for (const fs::path& inside :
         {root / "sub", root / "sub" / "file.pdf", root / "missing" / "file.pdf"}) {
        EXPECT_TRUE(IsInside(root, inside)) << inside;
    }
    for (const fs::path& outside : {root / "sub" / "..", root / "sub" / ".", root / "..",
                                    root / ".", root, root / "sub" / ".." / ".." / "file.pdf",
                                    root.parent_path() / "confined-root-other" / "file.pdf"}) {
        EXPECT_FALSE(IsInside(root, outside)) << outside;
    }
}

}  // namespace
