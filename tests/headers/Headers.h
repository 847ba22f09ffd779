// Headers.h: the numbers of the resources that the examples load.
#pragma once

#define IDR_MAIN 100
#define IDR_PAGE 101
#define IDR_NOTE 102
#define IDD_SETTINGS 200
#define IDC_COUNT 201
#define ID_RESET 300
