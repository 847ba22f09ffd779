// Resource.h: the numbers of the monitor's resources, the same in all languages.
#pragma once

// The frame: its menu, icon, accelerators and title.
#define IDR_MAIN 100

// The settings dialog.
#define IDD_SETTINGS 200
#define IDC_FOLDER 201
#define IDC_SUBFOLDERS 202
#define IDC_MOST_FILES 203
#define IDC_ENGLISH 204
#define IDC_GERMAN 205

// Commands. A language's is the first plus its number.
#define ID_FILE_SETTINGS 300
#define ID_FILE_RESCAN 301
#define ID_LANGUAGE_FIRST 310
#define ID_LANGUAGE_LAST 311

// Texts: the list's columns, what happened to a file, the status line.
#define IDS_COLUMN_FIRST 400
#define IDS_EVENT_FIRST 410
#define IDS_SCANNING 420
#define IDS_WATCHING 421
#define IDS_NO_DIALOG 422
