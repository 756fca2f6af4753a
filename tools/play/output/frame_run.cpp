// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Many frames painted by several threads.

#include <tools/play/output/frame_run.h>
#include <tools/play/painting/FramePainter.h>

#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace {

/// Threads that take the next frame, paint and encode it, and wait for their turn to hand it over:
/// so no more frames are held than there are threads.
class Painters {
public:
    Painters(Scene const& scene, FrameRun const& run, FrameOutput& output,
             std::function<void()> const& advance)
        : scene_(scene), run_(run), output_(output), advance_(advance)
    {
    }

    void Run()
    {
        std::vector<std::thread> threads;
        try {
            threads.reserve(run_.numThreads);
            for (unsigned int i = 1; i < run_.numThreads; ++i) {
                threads.emplace_back([this] { Work(); });
            }
        } catch (std::system_error const&) {
            // The system has no more threads to give: those that there are do the work.
        }
        Work();
        for (std::thread& thread : threads) {
            thread.join();
        }
        if (fault_ != nullptr) {
            std::rethrow_exception(fault_);
        }
    }

private:
    void Work() noexcept
    {
        try {
            PaintFrames();
        } catch (...) {
            std::lock_guard<std::mutex> const lock(mutex_);
            if (fault_ == nullptr) {
                fault_ = std::current_exception();
            }
            turn_.notify_all();
        }
    }

    void PaintFrames()
    {
        FramePainter painter(scene_, run_.width, run_.height);
        Canvas canvas(run_.width, run_.height);
        std::size_t number = 0;
        while (TakeNumber(number)) {
            painter.Paint(run_.firstFrame + static_cast<double>(number) * run_.step, canvas);
            EncodedFrame const frame = output_.Encode(canvas, number);
            std::unique_lock<std::mutex> lock(mutex_);
            turn_.wait(lock, [this, number] { return numTaken_ == number || fault_ != nullptr; });
            if (fault_ != nullptr) {
                return;
            }
            output_.Take(frame, number);
            ++numTaken_;
            advance_();
            turn_.notify_all();
        }
    }

    bool TakeNumber(std::size_t& number)
    {
        std::lock_guard<std::mutex> const lock(mutex_);
        number = numStarted_;
        bool const isLeft = number < run_.numFrames && fault_ == nullptr;
        numStarted_ += isLeft ? 1 : 0;
        return isLeft;
    }

    Scene const& scene_;
    FrameRun const& run_;
    FrameOutput& output_;
    std::function<void()> const& advance_;
    std::mutex mutex_;  ///< guards all below, the output and the progress
    std::condition_variable turn_;
    std::size_t numStarted_ = 0;
    std::size_t numTaken_ = 0;
    std::exception_ptr fault_;
};

}  // namespace

void FrameRun_Paint(Scene const& scene, FrameRun const& run, FrameOutput& output,
                    std::function<void()> const& advance)
{
    Painters(scene, run, output, advance).Run();
    output.Close();
}
