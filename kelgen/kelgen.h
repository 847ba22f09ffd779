// kelgen.h: every public header of the library, for hosts that want all of it.
#pragma once

#include <kelgen/platform/WideText.h>
#include <kelgen/platform/Win32.h>

#include <kelgen/framework/Archive.h>
#include <kelgen/framework/Array.h>
#include <kelgen/framework/ArrayTypes.h>
#include <kelgen/framework/CmdTarget.h>
#include <kelgen/framework/Exceptions.h>
#include <kelgen/framework/File.h>
#include <kelgen/framework/FileFind.h>
#include <kelgen/framework/List.h>
#include <kelgen/framework/ListTypes.h>
#include <kelgen/framework/Map.h>
#include <kelgen/framework/MapTypes.h>
#include <kelgen/framework/MemFile.h>
#include <kelgen/framework/ModuleState.h>
#include <kelgen/framework/Object.h>
#include <kelgen/framework/OleDateTime.h>
#include <kelgen/framework/OleException.h>
#include <kelgen/framework/OleVariant.h>
#include <kelgen/framework/StdioFile.h>
#include <kelgen/framework/String.h>
#include <kelgen/framework/StringArray.h>
#include <kelgen/framework/Synchronization.h>
#include <kelgen/framework/WinApp.h>
#include <kelgen/framework/WinThread.h>

#include <kelgen/containers/BaseArray.h>
#include <kelgen/containers/BaseComparable.h>
#include <kelgen/containers/BaseComparableArray.h>
#include <kelgen/containers/BaseId.h>
#include <kelgen/containers/BaseIntArray.h>
#include <kelgen/containers/BaseMap.h>
#include <kelgen/containers/BaseMapPtrToPtr.h>
#include <kelgen/containers/BaseNumericArray.h>
#include <kelgen/containers/BasePtrAllocArray.h>
#include <kelgen/containers/DWArray.h>
#include <kelgen/containers/DWordStack.h>
#include <kelgen/containers/Fast2DWStrArray.h>
#include <kelgen/containers/FastArray.h>
#include <kelgen/containers/Flags.h>
#include <kelgen/containers/MemoryStorage.h>
#include <kelgen/containers/StdArrayInterface.h>
#include <kelgen/containers/StdSort.h>

#include <kelgen/text/BSTR.h>
#include <kelgen/text/IntegerText.h>
#include <kelgen/text/International.h>
#include <kelgen/text/MapStrToStr.h>
#include <kelgen/text/Str.h>
#include <kelgen/text/StrArray.h>
#include <kelgen/text/StrTokenizer.h>
#include <kelgen/text/WArchive.h>
#include <kelgen/text/WStr.h>
#include <kelgen/text/WStrArray.h>
#include <kelgen/text/WStrTokenizer.h>

#include <kelgen/property/AppIntegerMap.h>
#include <kelgen/property/Property.h>
#include <kelgen/property/PropertySet.h>
#include <kelgen/property/PropertySetListener.h>
#include <kelgen/property/PropertyValue.h>
#include <kelgen/property/PropertyValueTrigger.h>
#include <kelgen/property/PropertyValueTriggerCallback.h>
#include <kelgen/property/Reference.h>

#include <kelgen/persistence/BufferedFile.h>
#include <kelgen/persistence/CRC.h>
#include <kelgen/persistence/IniFile.h>
#include <kelgen/persistence/MemoryFile.h>
#include <kelgen/persistence/MemoryStorage.h>
#include <kelgen/persistence/Registry.h>
#include <kelgen/persistence/RegistryPropertyExchange.h>

#include <kelgen/system/DBInterface.h>
#include <kelgen/system/KELException.h>
#include <kelgen/system/Math.h>
#include <kelgen/system/Resource.h>
#include <kelgen/system/Savings.h>
#include <kelgen/system/Shell.h>
#include <kelgen/system/VersionInfo.h>

#include <kelgen/window/CompletionReport.h>
#include <kelgen/window/MessageHook.h>
#include <kelgen/window/MessageWindow.h>
#include <kelgen/window/Presence.h>
#include <kelgen/window/Timer.h>
#include <kelgen/window/WindowHook.h>
#include <kelgen/window/WndInterface.h>
