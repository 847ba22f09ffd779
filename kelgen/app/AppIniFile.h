// AppIniFile.h: the application's own INI file.
#pragma once

#include <kelgen/persistence/IniFile.h>

namespace _kelgen {

/// The INI file whose path the application object gives; empty when there is none, or no application of the library's.
class KELGEN_API CAppIniFile : public CIniFile
{
public:
    CAppIniFile();
};

}  // namespace _kelgen
