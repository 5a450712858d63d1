// Qt headers used by nearly every object-model source; precompiled per target.
#include <QtCore>
#include <QtGui>
