#ifndef VELLACORE_STANDINS_MESA_FRAMESINK_H
#define VELLACORE_STANDINS_MESA_FRAMESINK_H

#include "GifRecorder.h"

#include <string>
#include <vector>

// Receives every finished frame of the window surface and turns it into what a player of the
// handheld sees: the panel is addressed as a 240 x 320 portrait framebuffer but mounted so that it
// shows a 320 x 240 landscape picture. Keeps the last frame for tests and can save each frame as
// frame-NNNNN.png, and the whole run as one animated run.gif beside them.
class FrameSink {
public:
    static int const S_PortraitWidth = 240;
    static int const S_PortraitHeight = 320;
    static int const S_Width = S_PortraitHeight;
    static int const S_Height = S_PortraitWidth;

    // The one sink of the library, saving into VELLACORE_FRAME_DIR if that is set when the library
    // is loaded.
    static FrameSink& Instance();

    // Null or empty keeps frames in memory only. The directory is created when missing.
    void SetDirectory(char const* directory);
    // Completes run.gif; frames after this start it afresh.
    void EndRun();
    // RGBA rows of the portrait framebuffer as glReadPixels returns them, bottom row first.
    void Accept(unsigned char const* portrait);
    int GetCount() const;
    // RGBA rows of the landscape picture, top row first; false before the first frame.
    bool CopyLast(unsigned char* landscape) const;

private:
    FrameSink();
    void Save() const;

    static FrameSink S_Instance;

    std::string m_Directory;
    std::vector<unsigned char> m_Landscape;
    int m_Count;
    GifRecorder m_Animation;
};

#endif
