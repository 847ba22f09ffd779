// CmdTarget.cpp: the class record of command targets.
#include <kelgen/framework/CmdTarget.h>

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

CCmdTarget::~CCmdTarget() = default;
