#ifndef VELLACORE_EXAMPLES_FIRSTGAME_H
#define VELLACORE_EXAMPLES_FIRSTGAME_H

#include "Vellacore/Vellacore.h"

// The first game on the engine: a chequered ring tumbles above a tiled floor in the App's light,
// and the App's fly camera moves around it. It stops after a set number of frames.
class FirstGame : public Vellacore::App {
public:
    FirstGame();

    // Takes "--frames N" (default 180). False on any other argument, and when the App fails.
    bool Init(int argc, char** argv) override;
    // Off the handheld, presses the buttons of the scripted flight before they are read.
    void ProcessInput() override;
    void ProcessAnimations() override;
    void ProcessDraw() override;
    bool RequestExit() override;

private:
    bool ReadArguments(int argc, char** argv);
    void BuildScene();

    Vellacore::Ptr<Vellacore::Transform> m_Ring;
    // Degrees turned so far, kept below a full turn.
    Vellacore::Fixed m_Spin;
    int m_Frame;
    int m_FrameCount;
};

#endif
