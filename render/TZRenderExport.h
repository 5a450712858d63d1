#pragma once

#include <QtCore/qglobal.h>

#if defined(TZRENDER_LIBRARY)
#  define TZRENDER_EXPORT Q_DECL_EXPORT
#else
#  define TZRENDER_EXPORT Q_DECL_IMPORT
#endif
