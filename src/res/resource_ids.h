/* Numbers of the library's resources. Language libraries use the same ones. Read by the compiler and
   by the resource compiler. */
#ifndef KELVO_RES_RESOURCE_IDS_H
#define KELVO_RES_RESOURCE_IDS_H

/* Strings */
#define IDS_MEDIA_TITLE 1100
#define IDS_PLAYLISTS_TITLE 1101
#define IDS_CURRENT_TITLE 1102
#define IDS_CATALOG_CAPTION 1103
#define IDS_VERSION 2000
#define IDS_COLUMN_GENRE 2001
#define IDS_COLUMN_ALBUM 2002
#define IDS_COLUMN_ARTIST 2003
#define IDS_TITLE 2004
#define IDS_NEW_PRESET 2005
#define IDS_TIME 2009
#define IDS_TAG_NOT_WRITTEN 2102
#define IDS_DELETE_CAPTION 2103
#define IDS_RENAME_FILE 2200
#define IDS_DELETE_ITEM 2201
#define IDS_SCANNING 2202
#define IDS_ASK_DELETE 40049
#define IDS_PRESET_EXISTS 2104
#define IDS_FILE_EXISTS 2105

/* Dialogs and their controls */
#define IDD_MEDIA 110
#define IDC_TREE 1000
#define IDD_PLAYLISTS 111
#define IDD_CURRENT 130
#define IDC_LIST 1001
#define IDD_TEXT_ENTRY 129
#define IDC_TEXT_ENTRY 1000
#define IDD_TAG_EDITOR 131
#define IDC_TAG_TITLE 1001
#define IDC_TAG_ARTIST 1002
#define IDC_TAG_ALBUM 1003
#define IDC_TAG_GENRE 1004
#define IDC_TAG_YEAR 1005
#define IDC_TAG_TRACK 1006
#define IDC_TAG_COMMENT 1007
#define IDC_TAG_UPDATE 1008
#define IDC_TAG_FILE 1009

/* Menu bars (a menu and a table of the same number) and their strip of images */
#define IDR_PLAYLISTS_BAR 125
#define IDR_MEDIA_BAR 126
#define IDR_CURRENT_BAR 127
#define IDB_MENU_BAR 114

/* Icons */
#define IDI_ALBUM 106
#define IDI_ARTIST 107
#define IDI_GENRE 108
#define IDI_FILE 109
#define IDI_UNCHECKED 111
#define IDI_CHECKED 112
#define IDI_NO_STATE 113
#define IDI_FOLDER 128
#define IDI_FILE_MISSING 135
#define IDI_FILE_PRESENT 136

/* Commands; the tip of a button is the string of the same number */
#define ID_RESCAN 40019
#define ID_RENAME 40021
#define ID_DELETE_FILE 40023
#define ID_PLAY 40024
#define ID_FIRST_ORDER 40025
#define ID_LAST_ORDER 40031
#define ID_GROUPING 40032
#define ID_CHECKS 40033
#define ID_CHECK_ALL 40034
#define ID_CHECK_NONE 40035
#define ID_REMOVE_SELECTED 40036
#define ID_SAVE_PLAYLIST 40038
#define ID_INVERT_CHECKS 40039
#define ID_ADD_CHECKED 40040
#define ID_EDIT_TAG 40042
#define ID_ENQUEUE 40044
#define ID_MOVE_UP 40046
#define ID_MOVE_DOWN 40048
#define ID_SELECTION 40050
#define ID_SELECT_ALL 40100
#define ID_SELECT_NONE 40101
#define ID_INVERT_SELECTION 40102

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
