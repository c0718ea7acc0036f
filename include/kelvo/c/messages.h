/* Window messages that the library posts to windows of the host.
 *
 * Generated from tools/contract/messages.txt. */
#ifndef KELVO_C_MESSAGES_H
#define KELVO_C_MESSAGES_H

#include <stdint.h>

/* Playback came to its end, or failed; both parameters are 0. Posted to the window given to
 * SetNotifyWindow or SetOwnerWindow. WM_USER + 1544. */
#define KELVO_MESSAGE_END_OF_PLAYBACK 0x0A08

/* The user plays files from the catalog: posted to the window given to ShowCatalog, in this
 * order, after the callback has received the files. Both parameters are 0. WM_USER + 1537 and
 * + 1536. */
#define KELVO_MESSAGE_CATALOG_PLAY 0x0A01
#define KELVO_MESSAGE_CATALOG_PLAYED 0x0A00

/* The user chose a command of the bookmarks window for a bookmark; posted to the window given
 * to ShowBookmarks. First parameter: KELVO_BOOKMARK_PLAY or KELVO_BOOKMARK_ENQUEUE; second:
 * the bookmark's index, for GetBookmark. Nothing plays until the host reacts. WM_USER + 1304. */
#define KELVO_MESSAGE_PLAY_BOOKMARK 0x0918
#define KELVO_BOOKMARK_PLAY 0
#define KELVO_BOOKMARK_ENQUEUE 1

#endif
