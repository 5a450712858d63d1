#pragma once

#include <QCoreApplication>
#include <QMessageBox>
#include <QWidget>

#include <exception>

// Runs the body of a raster panel's slot so that no exception leaves it;
// the user is told what went wrong.
template <class Body>
void tzRunSlotGuarded(QWidget* parent, Body&& body)
{
    QString what;
    try {
        body();
        return;
    } catch (const std::exception& e) {
        what = QString::fromLocal8Bit(e.what());
    } catch (...) {
        what = QCoreApplication::translate("TzSlotGuard", "Unknown error");
    }
    QMessageBox::warning(parent, QCoreApplication::translate("TzSlotGuard", "Error!"), what, QMessageBox::Ok);
}
