#pragma once

#include <QtCore/qglobal.h>

#if defined(TZHOSTWIDGETS_LIBRARY)
#  define TZHOSTWIDGETS_EXPORT Q_DECL_EXPORT
#else
#  define TZHOSTWIDGETS_EXPORT Q_DECL_IMPORT
#endif
