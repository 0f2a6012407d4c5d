// The game's main loop, as every game on the engine has it: the log and the system services
// first, then the game from Init through the frames to Exit, then the services shut down again.
#include "FirstGame.h"

#include <chrono>
#include <cstdio>
#include <thread>

using namespace Vellacore;

namespace {

// Frames are held to 30 a second, so the game moves at the same pace on any machine that keeps up.
U32 const S_FrameTicks = 1000000 / 30;

// Sleeps until `next`, then moves it on by a frame. A machine that fell behind starts counting
// from now rather than rushing to catch up.
void WaitForFrame(U32& next)
{
    U32 const now = System::GetSystemTimerTicks();
    I32 const left = WrapI32(next - now);
    if (left > 0)
        std::this_thread::sleep_for(std::chrono::microseconds(left));
    else
        next = now;
    next += S_FrameTicks;
}

int Play(int argc, char** argv)
{
    FirstGame game;
    bool const ready = game.Init(argc, argv);
    U32 next = System::GetSystemTimerTicks() + S_FrameTicks;
    while (ready && !game.RequestExit()) {
        game.ProcessFrame();
        game.ProcessInput();
        game.ProcessCamera();
        game.ProcessAnimations();
        game.ProcessDraw();
        WaitForFrame(next);
    }
    game.Exit();
    return ready ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    Logger::Init();
    int status = 1;
    if (System::Init())
        status = Play(argc, argv);
    System::Exit();
    Logger::Exit();
    if (status != 0)
        std::fprintf(stderr, "%s: could not start; Xapp.log says why\n", argv[0]);
    return status;
}
