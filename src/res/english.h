/* The built-in texts, and the list of all that a language library translates (languages/README.md).
   %s and %d stand for what is filled in: each text keeps them, in their order. & underlines the letter
   that chooses a menu item. \r ends a line. */

/* The catalog: caption of the sheet, and its tabs, which share the width of the screen */
#define TEXT_PLAYLIST_ORGANIZER "Playlist Organizer"
#define TEXT_PLAYLIST_CATALOG "Playlist Catalog"
#define TEXT_MEDIA_CATALOG "Media Catalog"
#define TEXT_CURRENT_PLAYLIST "Curr. Playlist"

/* Headings of lists: artist has 60 pixels, time 45 */
#define TEXT_COLUMN_TITLE "Title"
#define TEXT_COLUMN_ARTIST "Artist"
#define TEXT_COLUMN_ALBUM "Album"
#define TEXT_COLUMN_GENRE "Genre"
#define TEXT_COLUMN_TIME "Time"

/* Tips of the catalog's buttons */
#define TEXT_RESCAN "Rescan Media Info"
#define TEXT_RENAME "Rename"
#define TEXT_DELETE_SELECTED "Delete Selected Files"
#define TEXT_ADD_CHECKED "Add checked items to current playlist"
#define TEXT_EDIT_TAG "Edit media description"
#define TEXT_PLAY_CHECKED "Play checked items in Velmora"
#define TEXT_ENQUEUE_CHECKED "Enqueue checked items in Velmora"
#define TEXT_SAVE_PLAYLIST "Save playlist"
#define TEXT_REMOVE_SELECTED "Remove selected song(s) from list"
#define TEXT_MOVE_UP "Move selected items up"
#define TEXT_MOVE_DOWN "Move selected items down"

/* The catalog's menus */
#define TEXT_MENU_CHECK "Check"
#define TEXT_CHECK_ALL "Check &All"
#define TEXT_CHECK_NONE "Check None"
#define TEXT_INVERT_CHECKS "Invert Check State"
#define TEXT_MENU_GROUP "Group"
#define TEXT_BY_GENRE_ARTIST_ALBUM "Genre\\Artist\\Album"
#define TEXT_BY_GENRE_ALBUM_ARTIST "Genre\\Album\\Artist"
#define TEXT_BY_ARTIST_ALBUM "Artist\\Album"
#define TEXT_BY_ALBUM_ARTIST "Album\\Artist"
#define TEXT_BY_ALBUM "Album Title"
#define TEXT_BY_ARTIST "Artist Name"
#define TEXT_BY_FOLDER "Directory\\Filename"
#define TEXT_MENU_SELECT "Select"
#define TEXT_SELECT_ALL "Select &All"
#define TEXT_SELECT_NONE "Select &None"
#define TEXT_INVERT_SELECTION "&Invert Selection"
#define TEXT_RENAME_FILE "Rename file"
#define TEXT_DELETE_FILE "Delete file"

/* While the device is scanned: the files found so far, and that a tap here ends it */
#define TEXT_SCANNING "Scanning: %d files. Tap here to stop."

/* Deleting: caption and question */
#define TEXT_DELETE_CAPTION "Delete File"
#define TEXT_ASK_DELETE "Do you want to permanently delete ""%s""?"

/* The dialog for one line of text */
#define TEXT_EDIT_FILE_NAME "Edit File Name"
#define TEXT_OK "OK"
#define TEXT_CANCEL "Cancel"

/* The tag editor */
#define TEXT_EDIT_DESCRIPTION "Edit Media Description"
#define TEXT_TAG_FILE "Filename:"
#define TEXT_TAG_TITLE "Title"
#define TEXT_TAG_ARTIST "Artist"
#define TEXT_TAG_ALBUM "Album"
#define TEXT_TAG_GENRE "Genre"
#define TEXT_TAG_YEAR "Year"
#define TEXT_TAG_TRACK "Track"
#define TEXT_TAG_COMMENT "Comment:"
#define TEXT_TAG_UPDATE "Update"
#define TEXT_TAG_CLOSE "Close"
#define TEXT_TAG_NOT_WRITTEN "Error updating file! The possible reason that it is locked by other application?"

/* Equalizer presets: the name proposed, and the question before one is replaced with its caption */
#define TEXT_NEW_PRESET "New Preset"
#define TEXT_PRESET_EXISTS "Specified preset already exists. Overwrite?"
#define TEXT_FILE_EXISTS "File Exists"

/* Bookmarks */
#define TEXT_BOOKMARKS "Velmora Bookmarks"
#define TEXT_MENU_BOOKMARK "Bookmark"
#define TEXT_BOOKMARK_EDIT "Edit bookmark"
#define TEXT_BOOKMARK_PLAY "Play"
#define TEXT_BOOKMARK_ENQUEUE "Enqueue file"
#define TEXT_BOOKMARK_DELETE "Delete"
#define TEXT_BOOKMARK_DELETE_DEAD "Delete dead bookmarks"
#define TEXT_EDIT_BOOKMARK "Edit Bookmark"
#define TEXT_BOOKMARK_PATH "Full path to media file:"
#define TEXT_BOOKMARK_DESCRIPTION "Description:"
#define TEXT_BOOKMARK_POSITION "Position:"
#define TEXT_BOOKMARK_OK "Ok"

/* The version: two numbers */
#define TEXT_VERSION "Velmora Feature Pack\rversion %d.%d installed."
