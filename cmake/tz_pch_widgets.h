// Qt headers used by nearly every widget source; precompiled per target.
#include <QtCore>
#include <QtGui>
#include <QtWidgets>
