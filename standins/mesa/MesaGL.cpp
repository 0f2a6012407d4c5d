#include "MesaGL.h"

#include "FrameSink.h"

void MesaGL_SetFrameDirectory(char const* directory)
{
    FrameSink::Instance().SetDirectory(directory);
}

int MesaGL_GetFrameCount()
{
    return FrameSink::Instance().GetCount();
}

int MesaGL_CopyLastFrame(unsigned char* rgba)
{
    return FrameSink::Instance().CopyLast(rgba) ? 1 : 0;
}
