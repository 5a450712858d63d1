#pragma once

#include <QtCore/qglobal.h>

#if defined(TZOBJECTS_LIBRARY)
#  define TZOBJECTS_EXPORT Q_DECL_EXPORT
#elif defined(TZOBJECTS_STATIC)
#  define TZOBJECTS_EXPORT
#else
#  define TZOBJECTS_EXPORT Q_DECL_IMPORT
#endif
