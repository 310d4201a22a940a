// The leak checker (leak_check.py beside this file) from C++ tests: what of the removed texts a
// saved PDF still holds, in its raw or inflated bytes or in pdftotext's text.
#pragma once

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace leak_check {

// One line "TEXT<TAB>WHERE" per finding; empty when nothing remains. A file that cannot be read
// gives "unreadable".
inline std::string Leaks(const std::string& pdf, const std::vector<std::string>& texts) {
    auto quoted = [](const std::string& s) {
        std::string out = "'";
        for (const char c : s)
            out += c == '\'' ? std::string("'\\''") : std::string(1, c);
        return out + "'";
    };
    std::string command = "python3 " + quoted(LEAK_CHECK_SCRIPT) + " " + quoted(pdf);
    for (const std::string& text : texts)
        command += " " + quoted(text);
    command += "; echo \"rc=$?\"";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    if (!pipe)
        return "unreadable";
    std::string output;
    std::array<char, 4096> buffer{};
    std::size_t read = 0;
    while ((read = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) > 0)
        output.append(buffer.data(), read);
    if (output.find("rc=2") != std::string::npos)
        return "unreadable";
    return output.substr(0, output.rfind("rc="));
}

}  // namespace leak_check
