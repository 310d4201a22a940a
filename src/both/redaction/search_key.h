// A search key as the result store keeps it. The plug-in's own keys are GUID texts of 38
// characters ("{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", upper-case hex); they are held as their
// 16 bytes, as the store keeps every key of every search until its document closes. Any other
// text is held as it is, so every key reads back exactly as it was given.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

class SearchKey {
  public:
    explicit SearchKey(std::wstring_view text);

    std::wstring Text() const;

    auto operator<=>(const SearchKey&) const = default;
    bool operator==(const SearchKey&) const = default;

  private:
    using Guid = std::array<uint8_t, 16>;
    std::variant<Guid, std::wstring> value_;
};
