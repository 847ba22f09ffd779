// Apartments.cpp: counts of the calling thread; there is nothing behind them to start.
#include <kelgen/platform/posix/ole/api/Apartments.h>

namespace {

struct Apartment
{
    int entered = 0;
    int oleEntered = 0;
    DWORD mode = 0;
};
thread_local Apartment apartment;

}  // namespace

HRESULT CoInitializeEx(LPVOID, DWORD mode)
{
    const DWORD kind = mode & COINIT_APARTMENTTHREADED;
    if (apartment.entered > 0 && apartment.mode != kind)
        return RPC_E_CHANGED_MODE;
    apartment.mode = kind;
    return apartment.entered++ > 0 ? S_FALSE : S_OK;
}

HRESULT CoInitialize(LPVOID reserved)
{
    return CoInitializeEx(reserved, COINIT_APARTMENTTHREADED);
}

void CoUninitialize()
{
    if (apartment.entered > 0)
        --apartment.entered;
}

HRESULT OleInitialize(LPVOID reserved)
{
    const HRESULT result = CoInitialize(reserved);
    if (FAILED(result))
        return result;
    return apartment.oleEntered++ > 0 ? S_FALSE : S_OK;
}

void OleUninitialize()
{
    if (apartment.oleEntered > 0)
        --apartment.oleEntered;
    CoUninitialize();
}
