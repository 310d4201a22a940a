#pragma once

#include <cstdint>

namespace pdfhost::engine::permission {

// Bits of a document's permissions, as in the encryption dictionary's /P value.
inline constexpr std::uint32_t kPrint = 0x04;
inline constexpr std::uint32_t kModify = 0x08;
inline constexpr std::uint32_t kCopy = 0x10;
inline constexpr std::uint32_t kAnnotate = 0x20;
inline constexpr std::uint32_t kFillForms = 0x100;
inline constexpr std::uint32_t kAccessibility = 0x200;
inline constexpr std::uint32_t kAssemble = 0x400;
inline constexpr std::uint32_t kPrintHighQuality = 0x800;

// What an unencrypted document, or one opened with its owner password, grants.
inline constexpr std::uint32_t kAll = kPrint | kModify | kCopy | kAnnotate | kFillForms |
                                      kAccessibility | kAssemble | kPrintHighQuality;

}  // namespace pdfhost::engine::permission
