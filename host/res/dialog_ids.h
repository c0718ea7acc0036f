/* Numbers of the player's dialogs and their controls. Read by the compiler and by the resource
   compiler. */
#ifndef VELMORA_DIALOG_IDS_H
#define VELMORA_DIALOG_IDS_H

#define DIALOG_JUMP 700
#define CONTROL_SEARCH_LABEL 100
#define CONTROL_SEARCH 101
#define CONTROL_FOUND 102

#define DIALOG_INFO 701
/* Labels, then from CONTROL_INFO_VALUES on their values, both in the order of the texts from
   TEXT_INFO_TITLE to TEXT_INFO_FILE. */
#define CONTROL_INFO_LABELS 110
#define CONTROL_INFO_VALUES 120

#endif
