// application.h: the numbers of the application's resources.
#pragma once

#define IDR_MAIN 100
#define IDD_ORDER 200
#define IDC_CUSTOMER 201
#define IDC_AMOUNT 202
#define IDC_EXPRESS 203
#define ID_ORDER_NEW 300
#define ID_ORDER_CLEAR 301
