#include "platform/recognition/blaze_face.h"
#include "platform/recognition/tesseract_engine.h"

// The two entries of the loadable module.
extern "C" Q_DECL_EXPORT TextEngine *lumenpost_text_engine()
{
    return new TesseractEngine;
}

extern "C" Q_DECL_EXPORT FaceEngine *lumenpost_face_engine()
{
    return new BlazeFace;
}
