/* Resources of the tests' own program and languages. */
#ifndef KELVO_TESTS_LANGUAGE_TEST_RESOURCES_H
#define KELVO_TESTS_LANGUAGE_TEST_RESOURCES_H

#define IDS_BUILT_IN_ONLY 3000
#define IDS_UNTERMINATED 3001
#define IDD_BUILT_IN_ONLY 300
#define IDM_TEST_BAR 301
#define IDC_LANGUAGE 302
/* Menu bars and dialogs that the translation does not have in full. */
#define IDM_NO_TABLE 310
#define IDM_SHORT_TABLE 311
#define IDM_LACKS_COMMAND 312
#define IDD_LACKS_BUTTON 313
#define IDD_EXTENDED 314

#endif
