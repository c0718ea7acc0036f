/* Resources of the tests' own program and languages. */
#ifndef KELVO_TESTS_LANGUAGE_TEST_RESOURCES_H
#define KELVO_TESTS_LANGUAGE_TEST_RESOURCES_H

#define IDS_BUILT_IN_ONLY 3000
#define IDS_UNTERMINATED 3001
#define IDD_BUILT_IN_ONLY 300
#define IDM_TEST_BAR 301
#define IDC_LANGUAGE 302

#endif
