/* Numbers of the library's resources. Language libraries use the same ones. Read by the compiler and
   by the resource compiler. */
#ifndef KELVO_RES_RESOURCE_IDS_H
#define KELVO_RES_RESOURCE_IDS_H

/* Strings */
#define IDS_VERSION 2000
#define IDS_TITLE 2004
#define IDS_NEW_PRESET 2005
#define IDS_TIME 2009
#define IDS_PRESET_EXISTS 2104
#define IDS_FILE_EXISTS 2105

/* Images */
#define IDB_MENU_BAR 114
#define IDI_FILE_MISSING 135
#define IDI_FILE_PRESENT 136

/* Dialogs and their controls */
#define IDD_TEXT_ENTRY 129
#define IDC_TEXT_ENTRY 1000

#define IDD_BOOKMARKS 133
#define IDC_BOOKMARK_LIST 1013

#define IDD_EDIT_BOOKMARK 137
#define IDC_BOOKMARK_PATH 1014
#define IDC_BOOKMARK_DESCRIPTION 1016
#define IDC_BOOKMARK_MINUTES 1020
#define IDC_BOOKMARK_SECONDS 1021

/* Menu bars and their commands. A button with a popup has a string of its command's number. */
#define IDM_BOOKMARKS 134
#define IDM_BOOKMARK_POPUP 40105
#define IDM_BOOKMARK_EDIT 40106
#define IDM_BOOKMARK_PLAY 40107
#define IDM_BOOKMARK_ENQUEUE 40108
#define IDM_BOOKMARK_DELETE 40109
#define IDM_BOOKMARK_DELETE_DEAD 40110

#endif
