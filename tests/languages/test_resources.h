/* Resources of the tests' own program and language, which do not have the same in full. */
#ifndef KELVO_TESTS_LANGUAGES_TEST_RESOURCES_H
#define KELVO_TESTS_LANGUAGES_TEST_RESOURCES_H

#define IDS_BUILT_IN_ONLY 3000
#define IDS_UNTERMINATED 3001
#define IDD_BUILT_IN_ONLY 300
#define IDM_TEST_BAR 301
#define IDC_LANGUAGE 302
#define IDM_NO_TABLE 310
#define IDM_SHORT_TABLE 311
#define IDM_LACKS_COMMAND 312
#define IDD_LACKS_BUTTON 313
#define IDD_EXTENDED 314

/* For scripts: a small dialog of the kind DIALOG or DIALOGEX, a menu of one popup, its table. */
#define TEST_DIALOG(number, kind, caption) \
  number kind 0, 0, 60, 30 STYLE WS_POPUP | WS_VISIBLE | WS_CAPTION CAPTION caption
#define TEST_MENU(number, popup, ...) number MENU BEGIN POPUP popup BEGIN __VA_ARGS__ END END
#define TEST_TABLE(number) number RCDATA BEGIN number, 1, -2, 40000, 4, 8, 0, 0, 0 END

#endif
