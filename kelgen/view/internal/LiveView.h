// LiveView.h: what each address of the live page serves, and to whom.
#pragma once

#include <kelgen/view/Export.h>
#include <kelgen/view/http/Service.h>
#include <kelgen/view/internal/Gate.h>
#include <kelgen/view/internal/Stage.h>

#include <chrono>

namespace kelgen::view::detail {

/// Threads: the server's alone.
class KELGEN_VIEW_TESTED_API LiveView final : public http::Service
{
public:
    /// Shows what is on @p stage, which outlives it, to whom @p gate lets pass.
    LiveView(Gate gate, Stage& stage);

    http::Response Answer(const http::Request& request) override;
    std::string NextEvent(std::uint64_t& seen) override;
    void OnStreams(int count) override;
    bool OnTick() override;

private:
    using Clock = std::chrono::steady_clock;

    http::Response TakeInput(const http::Request& request);

    Gate m_gate;
    Stage& m_stage;
    int m_streams = 0;
    Clock::time_point m_leftAt{};
};

}  // namespace kelgen::view::detail
