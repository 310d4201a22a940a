// Paths from the plug-in's wide text and UTF-8, and back, never through the system's narrow code
// page: where paths are wide (Windows) the wide text is the path itself; where they are bytes
// (Linux) the bytes are the text's UTF-8. Files are then opened through the path.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

std::filesystem::path PathOfWide(std::wstring_view text);
std::wstring WideOfPath(const std::filesystem::path& path);

std::filesystem::path PathOfUtf8(std::string_view text);
std::string Utf8OfPath(const std::filesystem::path& path);

// The part of a path after its last "/" or "\"; the whole text when it has neither.
std::wstring LastPathComponent(std::wstring_view path);
