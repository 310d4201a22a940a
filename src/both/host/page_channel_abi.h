// The page channel that a host may offer as the extension table "pdfhost.pageChannel", version 1:
// a page without a browser, whose messages the host hands to one plug-in and which takes that
// plug-in's replies and event scripts. All text crosses as UTF-8 with an explicit byte count, so
// that both sides agree whatever the width of wchar_t.
//
// Functions by index (see the HOST_EXT_OP rows of host_ops_list.h):
//   0 connect(receiver, client): the host calls receiver(client, text, size) with each message
//     the page posts, from its user-interface thread, until disconnect; gives 1 when connected,
//     0 when the channel is taken by another receiver.
//   1 disconnect(client): the receiver of that client data gets no more messages.
//   2 postMessage(text, size): a reply to the page, as a web message string.
//   3 executeScript(text, size): a script to run in the page (an event).
#pragma once

#include <cstdint>

#include "host_abi.h"

typedef void(BREVAN_HOSTCALL* HostPageMessageFn)(void* client, const char* utf8Text, uint32_t size);

// The table's name and version.
constexpr const char* kHostPageChannelTable = "pdfhost.pageChannel";
constexpr int kHostPageChannelVersion = 1;
