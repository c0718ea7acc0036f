/* Feature 1: what the host's module provides for the library's dialog for saving playlists. For C++
 * and for resource scripts. Other numbers of the module are the host's own. */
#ifndef KELVO_HOST_RESOURCES_H
#define KELVO_HOST_RESOURCES_H

/* The dialog and its controls: a tree view, an edit control, a button, a static text. */
#define KELVO_HOST_SAVE_DIALOG 115
#define KELVO_HOST_SAVE_TREE 1000
#define KELVO_HOST_SAVE_NAME 1001
#define KELVO_HOST_SAVE_BUTTON 1002
#define KELVO_HOST_SAVE_PATH 1003

/* The dialog's menu bar: a menu, and its table as RCDATA of the same number. */
#define KELVO_HOST_SAVE_MENU_BAR 117

/* Icons: the tree's, then the state images of its items. */
#define KELVO_HOST_ICON_SPARE 100
#define KELVO_HOST_ICON_FOLDER 108
#define KELVO_HOST_ICON_OPEN_FOLDER 109
#define KELVO_HOST_ICON_PLAYLIST 112
#define KELVO_HOST_ICON_STATE_1 113
#define KELVO_HOST_ICON_STATE_2 106
#define KELVO_HOST_ICON_STATE_3 107

/* Strings. */
#define KELVO_HOST_TEXT_EMPTY_PATH 6200
#define KELVO_HOST_CAPTION_EMPTY_PATH 6201
#define KELVO_HOST_TEXT_OVERWRITE 6202
#define KELVO_HOST_CAPTION_OVERWRITE 6203
#define KELVO_HOST_TEXT_NOT_CREATED 6204

#endif
