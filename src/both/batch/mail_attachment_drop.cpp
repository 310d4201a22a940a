#include "mail_attachment_drop.h"

#include <cstdint>
#include <cstdio>
#include <random>

#include "util/new_file.h"
#include "util/utf.h"
#include "util/wide_path.h"

namespace {

// The descriptor: a 32-bit count, then one 592-byte record per file whose name (260 UTF-16
// units) starts at byte 72.
constexpr std::size_t kCountSize = 4;
constexpr std::size_t kRecordSize = 592;
constexpr std::size_t kNameOffset = 72;
constexpr std::size_t kNameUnits = 260;
// No mail program drops more at once; a larger count is a damaged block.
constexpr std::uint32_t kMaxAttachments = 4096;

std::uint32_t ReadCount(std::string_view block) {
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < kCountSize; ++i)
        count |= static_cast<std::uint32_t>(static_cast<unsigned char>(block[i])) << (8 * i);
    return count;
}

std::wstring ReadName(std::string_view record) {
    std::u16string units;
    for (std::size_t i = 0; i < kNameUnits; ++i) {
        const auto low = static_cast<unsigned char>(record[kNameOffset + 2 * i]);
        const auto high = static_cast<unsigned char>(record[kNameOffset + 2 * i + 1]);
        const auto unit = static_cast<char16_t>(low | (high << 8));
        if (unit == 0)
            break;
        units.push_back(unit);
    }
    return LastPathComponent(FromUtf16(units));
}

// A file created under a fresh random name, exclusively.
class NewTempFile {
  public:
    explicit NewTempFile(const std::filesystem::path& folder) {
        std::random_device random;
        for (int attempt = 0; attempt < 16 && !file_; ++attempt) {
            char name[32];
            std::snprintf(name, sizeof name, "MSG%08X.msg", static_cast<unsigned>(random()));
            path_ = folder / name;
            file_ = CreateNewFile(path_);
        }
    }

    // Writes everything and keeps the file; false, with the file removed, on any failure.
    bool WriteAndKeep(std::string_view bytes) {
        if (!file_)
            return false;
        const bool written =
            std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) == bytes.size();
        const bool closed = std::fclose(file_.release()) == 0;
        if (written && closed)
            return true;
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
        return false;
    }

    const std::filesystem::path& path() const { return path_; }

  private:
    OwnedFile file_;
    std::filesystem::path path_;
};

}  // namespace

std::vector<std::wstring> AttachmentNames(std::string_view descriptor) {
    if (descriptor.size() < kCountSize)
        return {};
    const std::uint32_t count = ReadCount(descriptor);
    if (count > kMaxAttachments || (descriptor.size() - kCountSize) / kRecordSize < count)
        return {};
    std::vector<std::wstring> names;
    names.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i)
        names.push_back(ReadName(descriptor.substr(kCountSize + i * kRecordSize, kRecordSize)));
    return names;
}

std::vector<DroppedAttachment> SaveDroppedAttachments(std::string_view descriptor,
                                                      const AttachmentContents& contents,
                                                      const std::filesystem::path& tempFolder) {
    std::vector<DroppedAttachment> saved;
    const std::vector<std::wstring> names = AttachmentNames(descriptor);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::optional<std::string> bytes = contents(i);
        if (!bytes)
            continue;
        NewTempFile file(tempFolder);
        if (file.WriteAndKeep(*bytes))
            saved.push_back({file.path(), names[i]});
    }
    return saved;
}
