// The commands by which the page pulls a file through the bridge in base64 blocks: getFileStream
// hands out one block per request from the channel's input file, releaseFileStream ends the
// transfer. The file stays open between requests in the channel's stream.
#pragma once

#include "bridge/base_dispatcher.h"
#include "bridge/channel_file_stream.h"

struct DocumentServices;
class HostBytes;

// One block of the file of `file.id` at `offset`, of up to `blockSize` bytes. A modified open
// document is saved first, since the block comes from the file on disk.
class GetFileStreamDispatcher : public BaseDispatcher {
  public:
    // The largest block handed out; larger requests answer as an invalid block size.
    static constexpr int32_t kLargestBlock = 64 * 1024 * 1024;

    GetFileStreamDispatcher(const DocumentServices& services, const CommandParams& params,
                            ChannelFileStream& stream)
        : BaseDispatcher(params), services_(services), stream_(stream) {}
    Json::Value Run() override;

  protected:
    // The base64 text of a block goes into the written reply once, instead of through a JSON
    // value and the writer; the wide reply reads it where the host's encoder put it.
    std::string ReplyText() override;
    std::wstring WideReplyText() override;

  private:
    // Serves the request and hands the reply's text to `use` as pieces: the block's base64 text
    // stays a piece of its own.
    template <typename Use>
    auto WithReplyPieces(Use use);
    // Serves the request; the reply's `content` is left empty and the base64 text of the block
    // is put in `encoded`.
    Json::Value Serve(HostBytes& encoded);
    // The bytes of the next block, in a buffer the stream keeps; null when it cannot be had.
    char* BlockBuffer(std::size_t size);

    const DocumentServices& services_;
    ChannelFileStream& stream_;
};

// Closes the channel's file and takes the progress bar down. The reply is built here, not by
// MakeResult, so it never carries the request's identifier.
class ReleaseFileStreamDispatcher : public BaseDispatcher {
  public:
    ReleaseFileStreamDispatcher(const DocumentServices& services, ChannelFileStream& stream)
        : services_(services), stream_(stream) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
    ChannelFileStream& stream_;
};

// {"data": "", "ret": 0} without identifier: the reply of releaseFileStream and reload.
Json::Value EmptyTextReply();
