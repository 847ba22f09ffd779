// ServiceControllerTest.cpp: the controller against a real service.
#include <kelgen/system/ServiceController.h>

#include "support/system/Services.h"

using namespace kelgen::test;

namespace {

/// Milliseconds that @p call takes.
DWORD TimeOf(const std::function<void()>& call)
{
    const DWORD start = GetTickCount();
    call();
    return GetTickCount() - start;
}

}  // namespace

TEST(ServiceController, StartsWaitsAndStops)
{
    const InstalledService service("hold");
    CServiceController controller;
    EXPECT_EQ(CServiceController::serviceFailed, controller.GetServiceStatus());
    ASSERT_EQ(CServiceController::serviceOpened, controller.OpenServiceA(service.name.c_str()));
    EXPECT_EQ(CServiceController::serviceStopped, controller.GetServiceStatus());

    EXPECT_NE(0, controller.StartServiceA(0));
    EXPECT_EQ(CServiceController::serviceStartPending, controller.GetServiceStatus());
    EXPECT_LE(300u, TimeOf([&] { EXPECT_EQ(0, controller.StartServiceA(300)); })) << "a refused start waits too";
    EXPECT_EQ(CServiceController::serviceStartPending, controller.GetServiceStatus());
    service.Open("start");
    EXPECT_TRUE(service.Reaches(SERVICE_RUNNING));
    EXPECT_GT(150u, TimeOf([&] { EXPECT_EQ(0, controller.StartServiceA(kDeadline)); })) << "no wait for a state that is there";

    EXPECT_LE(300u, TimeOf([&] { EXPECT_NE(0, controller.StopService(300)); }));
    EXPECT_EQ(CServiceController::serviceStopPending, controller.GetServiceStatus());
    service.Open("stop");
    EXPECT_TRUE(service.Reaches(SERVICE_STOPPED));

    EXPECT_NE(0, controller.StartServiceA(kDeadline));
    EXPECT_EQ(CServiceController::serviceRunning, controller.GetServiceStatus());
    const CServiceController copy = controller;
    EXPECT_NE(0, controller.StopService(kDeadline));
    EXPECT_EQ(CServiceController::serviceStopped, controller.GetServiceStatus());
    EXPECT_EQ(0, controller.StopService(0));
}

TEST(ServiceController, TakesQuotesOutOfThePath)
{
    const InstalledService service("-k", "\"C:\\Some Folder\\svc.exe\"");
    CServiceController controller;
    EXPECT_STREQ("", controller.GetServiceBinaryPath());
    ASSERT_EQ(CServiceController::serviceOpened, controller.OpenServiceA(service.name.c_str()));
    EXPECT_STREQ(("C:\\Some Folder\\svc.exe " + DrivePath(service.report) + " -k").c_str(), controller.GetServiceBinaryPath());
    EXPECT_EQ(0, controller.StartServiceA(0)) << "no such program";

    const std::string longPath = "C:\\" + std::string(5000, 'a');
    ASSERT_TRUE(ChangeServiceConfigA(service.handle, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, longPath.c_str(), nullptr,
                                     nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_STREQ("", controller.GetServiceBinaryPath());
}

TEST(ServiceController, OfAnUnknownServiceFailsEverywhere)
{
    CServiceController controller;
    EXPECT_EQ(CServiceController::serviceFailed, controller.OpenServiceA("kelgen-test-nothing"));
    EXPECT_EQ(CServiceController::serviceFailed, controller.OpenServiceA("bad/name"));
    EXPECT_EQ(CServiceController::serviceFailed, controller.GetServiceStatus());
    EXPECT_EQ(0, controller.StartServiceA(0));
    EXPECT_EQ(0, controller.StopService(0));
}
