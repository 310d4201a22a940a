#include "dropped_data.h"

#include <shlobj.h>

#include <algorithm>
#include <optional>

#include "com_ptr.h"

namespace {

// A medium the data object handed over, released with it.
class Medium {
  public:
    Medium() = default;
    ~Medium() { ReleaseStgMedium(&medium_); }
    Medium(const Medium&) = delete;
    Medium& operator=(const Medium&) = delete;

    STGMEDIUM* Put() { return &medium_; }
    const STGMEDIUM& get() const { return medium_; }

  private:
    STGMEDIUM medium_{};
};

CLIPFORMAT FormatNamed(const wchar_t* name) {
    return static_cast<CLIPFORMAT>(RegisterClipboardFormatW(name));
}

FORMATETC FormatOf(CLIPFORMAT format, DWORD media, LONG index = -1) {
    return FORMATETC{format, nullptr, DVASPECT_CONTENT, index, media};
}

std::string GlobalBytes(HGLOBAL memory) {
    const void* bytes = GlobalLock(memory);
    if (bytes == nullptr)
        return {};
    std::string copy(static_cast<const char*>(bytes), GlobalSize(memory));
    GlobalUnlock(memory);
    return copy;
}

std::optional<std::string> StreamBytes(IStream& stream) {
    std::string bytes;
    char chunk[65536];
    ULONG read = 0;
    while (SUCCEEDED(stream.Read(chunk, sizeof chunk, &read)) && read > 0)
        bytes.append(chunk, read);
    return bytes;
}

// The storage written out as a compound file in memory.
std::optional<std::string> StorageBytes(IStorage& storage) {
    ComPtr<ILockBytes> memory;
    ComPtr<IStorage> copy;
    constexpr DWORD kNewFile = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
    if (FAILED(CreateILockBytesOnHGlobal(nullptr, TRUE, memory.Put())) ||
        FAILED(StgCreateDocfileOnILockBytes(memory.Get(), kNewFile, 0, copy.Put())) ||
        FAILED(storage.CopyTo(0, nullptr, nullptr, copy.Get())) ||
        FAILED(copy->Commit(STGC_DEFAULT)))
        return std::nullopt;
    STATSTG stat{};
    HGLOBAL global = nullptr;
    if (FAILED(memory->Stat(&stat, STATFLAG_NONAME)) ||
        FAILED(GetHGlobalFromILockBytes(memory.Get(), &global)))
        return std::nullopt;
    std::string bytes = GlobalBytes(global);
    bytes.resize(std::min<std::size_t>(bytes.size(), stat.cbSize.QuadPart));
    return bytes;
}

}  // namespace

std::vector<std::wstring> DroppedFilePaths(IDataObject& data) {
    FORMATETC format = FormatOf(CF_HDROP, TYMED_HGLOBAL);
    Medium medium;
    if (FAILED(data.GetData(&format, medium.Put())) || medium.get().tymed != TYMED_HGLOBAL)
        return {};
    const auto drop = static_cast<HDROP>(medium.get().hGlobal);
    std::vector<std::wstring> paths;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0) + 1, L'\0');
        path.resize(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size())));
        paths.push_back(std::move(path));
    }
    return paths;
}

bool HasMailAttachments(IDataObject& data) {
    FORMATETC format = FormatOf(FormatNamed(L"FileGroupDescriptorW"), TYMED_HGLOBAL);
    return data.QueryGetData(&format) == S_OK;
}

std::vector<DroppedAttachment> SaveMailAttachments(IDataObject& data,
                                                   const std::filesystem::path& tempFolder) {
    FORMATETC descriptorFormat = FormatOf(FormatNamed(L"FileGroupDescriptorW"), TYMED_HGLOBAL);
    Medium descriptor;
    if (FAILED(data.GetData(&descriptorFormat, descriptor.Put())) ||
        descriptor.get().tymed != TYMED_HGLOBAL)
        return {};
    const std::string block = GlobalBytes(descriptor.get().hGlobal);
    const CLIPFORMAT contentsFormat = FormatNamed(L"FileContents");
    const AttachmentContents contents = [&](std::size_t index) -> std::optional<std::string> {
        FORMATETC format = FormatOf(contentsFormat, TYMED_ISTORAGE | TYMED_ISTREAM | TYMED_HGLOBAL,
                                    static_cast<LONG>(index));
        Medium medium;
        if (FAILED(data.GetData(&format, medium.Put())))
            return std::nullopt;
        const STGMEDIUM& given = medium.get();
        switch (given.tymed) {
            case TYMED_ISTORAGE:
                return given.pstg != nullptr ? StorageBytes(*given.pstg) : std::nullopt;
            case TYMED_ISTREAM:
                return given.pstm != nullptr ? StreamBytes(*given.pstm) : std::nullopt;
            case TYMED_HGLOBAL:
                return GlobalBytes(given.hGlobal);
            default:
                return std::nullopt;
        }
    };
    return SaveDroppedAttachments(block, contents, tempFolder);
}
