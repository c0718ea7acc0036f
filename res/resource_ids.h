/* Numbers of the library's resources. Language libraries use the same ones. Read by the compiler and
   by the resource compiler. */
#ifndef KELVO_RES_RESOURCE_IDS_H
#define KELVO_RES_RESOURCE_IDS_H

/* Strings */
#define IDS_VERSION 2000

/* Dialogs and their controls */
#define IDD_TEXT_ENTRY 129
#define IDC_TEXT_ENTRY 1000

#endif
