// Window messages that the library posts to windows of the host.
//
// Generated from tools/contract/messages.txt.
#pragma once

#include <stdint.h>

namespace kelvo {

// Playback came to its end, or failed; both parameters are 0. Posted to the window given to
// SetNotifyWindow or SetOwnerWindow. WM_USER + 1544.
constexpr uint32_t kMessageEndOfPlayback = 0x0A08;

// The user plays files from the catalog: posted to the window given to ShowCatalog, in this order,
// after the callback has received the files. Both parameters are 0. WM_USER + 1537 and + 1536.
constexpr uint32_t kMessageCatalogPlay = 0x0A01;
constexpr uint32_t kMessageCatalogPlayed = 0x0A00;

// The user chose a command of the bookmarks window for a bookmark; posted to the window given to
// ShowBookmarks. First parameter: kBookmarkPlay or kBookmarkEnqueue; second: the bookmark's index,
// for GetBookmark. Nothing plays until the host reacts. WM_USER + 1304.
constexpr uint32_t kMessagePlayBookmark = 0x0918;
constexpr uint32_t kBookmarkPlay = 0;
constexpr uint32_t kBookmarkEnqueue = 1;

}  // namespace kelvo
