// Main.cpp: the main function of a program that is an application object and nothing else.
#include <kelgen/framework/program/WinApp.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int showCommand)
{
    return AfxWinMain(instance, previousInstance, commandLine, showCommand);
}
