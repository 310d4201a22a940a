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
    struct Case {
        fs::path target;
        bool inside;
    };
    const Case cases[] = {
        {root / "sub", true},
        {root / "sub" / "file.pdf", true},
        {root / "missing" / "file.pdf", true},
        {root / "sub" / "..", false},
        {root / "sub" / ".", false},
        {root / "..", false},
        {root / ".", false},
        {root, false},
        {root / "sub" / ".." / ".." / "file.pdf", false},
        {root.parent_path() / "confined-root-other" / "file.pdf", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(IsInside(root, c.target), c.inside) << c.target;
}

}  // namespace
