// Savings.cpp: finds the application's savings.
#include <kelgen/system/Savings.h>

#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>

CSavings::~CSavings() = default;

CSavings& CSavings::AppGetSavings()
{
    auto* const savings = dynamic_cast<CSavings*>(AfxGetApp());
    if (!savings)
        AfxThrowInvalidArgException();
    return *savings;
}
