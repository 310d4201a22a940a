// A file created for writing only when nothing stands at its path yet, so that neither an
// existing file nor a link planted there beforehand is written through.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, FileCloser>;

// The new file open for binary writing; null when something exists at `path` or it cannot be
// made.
OwnedFile CreateNewFile(const std::filesystem::path& path);
