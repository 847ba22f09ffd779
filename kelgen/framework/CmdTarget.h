// CmdTarget.h: the base of what takes commands and messages: windows, threads, documents, the application.
#pragma once

#include <kelgen/framework/Object.h>

/// Something that commands may be routed to.
class KELGEN_FRAMEWORK_API CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)

public:
    CCmdTarget() = default;
    ~CCmdTarget() override;
};
