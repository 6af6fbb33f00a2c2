/* All of Oxlume's flat boundary, but for LxQuartz.h, whose names are the platform's. */
#ifndef OXLUME_OXLUME_H
#define OXLUME_OXLUME_H

#include <oxlume/LxBase.h>
#include <oxlume/LxBlend.h>
#include <oxlume/LxColor.h>
#include <oxlume/LxCubicBezier.h>
#include <oxlume/LxGC.h>
#include <oxlume/LxGradient.h>
#include <oxlume/LxImage.h>
#include <oxlume/LxLibrary.h>
#include <oxlume/LxLine.h>
#include <oxlume/LxMatrix.h>
#include <oxlume/LxMem.h>
#include <oxlume/LxNativeImage.h>
#include <oxlume/LxPath.h>
#include <oxlume/LxPathIterator.h>
#include <oxlume/LxPixelType.h>
#include <oxlume/LxPoint.h>
#include <oxlume/LxRect.h>
#include <oxlume/LxScalar.h>
#include <oxlume/LxSheen.h>
#include <oxlume/LxThread.h>

#endif
