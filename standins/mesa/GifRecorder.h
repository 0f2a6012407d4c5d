#ifndef VELLACORE_STANDINS_MESA_GIFRECORDER_H
#define VELLACORE_STANDINS_MESA_GIFRECORDER_H

#include <chrono>
#include <string>
#include <vector>

struct GifFileType;

// Streams frames into one looping animated GIF, each frame shown for as long as the program took
// to the next one, so the picture plays at the speed of the run. A frame's display time is known
// only when the next one arrives, so one frame is always held back until then or until Finish.
class GifRecorder {
public:
    GifRecorder(int width, int height);
    ~GifRecorder();
    GifRecorder(GifRecorder const&) = delete;
    GifRecorder& operator=(GifRecorder const&) = delete;

    // Finishes the file being written; the next Add starts a new one at path ("" records nothing).
    void SetPath(std::string path);
    // RGBA rows, top row first.
    void Add(unsigned char const* rgba);
    // Writes the held frame and closes the file; the next Add starts the file afresh.
    void Finish();

private:
    typedef std::chrono::steady_clock Clock;

    bool Open();
    void Write(int delay);
    void Fail(char const* what, int error);
    // Centiseconds from the held frame to now, never shorter than the 2 that viewers still honour;
    // rounding is carried on, so the whole picture runs as long as the run did.
    int DelayUntil(Clock::time_point now);

    int const m_Width;
    int const m_Height;
    std::string m_Path;
    GifFileType* m_File;
    std::vector<unsigned char> m_Held;
    Clock::time_point m_Start;
    int m_Written; // centiseconds of frames written so far
    int m_LastDelay;
};

#endif
