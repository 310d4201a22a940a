// The input file of one bridge channel. Each channel owns one for the plug-in's whole run, so a
// file stays open from one block request to the next although every request has a new
// dispatcher.
#pragma once

#include <fstream>
#include <memory>
#include <string>

struct ChannelFileStream {
    std::ifstream file;
    std::wstring path;  // the file `file` was opened on; empty while closed
    // The buffer of the last block, kept for the next one until the page releases the file.
    std::unique_ptr<char[]> block;
    std::size_t blockCapacity = 0;
};
