#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include "core/TERefPtr.h"

#include <QComboBox>

#include <vector>

namespace TZObjects {
class TEColorRamp;
}

// Chooser of a colour ramp: the ramp catalog by group (a header per group,
// then its ramps, each with a gradient preview); the closed box shows the
// chosen ramp's gradient. A ramp given with setColorRamp that is not in the
// catalog is listed on top under "Current".
class TZHOSTWIDGETS_EXPORT TZColorSchemeComboBox : public QComboBox
{
    Q_OBJECT
public:
    explicit TZColorSchemeComboBox(QWidget* parent = nullptr);
    ~TZColorSchemeComboBox() override;

    // The chosen ramp (shared: clone it before changing it), or null.
    TZObjects::TEColorRamp* currentColorRamp() const;
    // Selects the catalog ramp of the same group and name, else lists a copy
    // of ramp under "Current" and selects it. Null is ignored.
    void setColorRamp(TZObjects::TEColorRamp* ramp);
    // Selects the ramp called name in group; when the group has no such
    // ramp, its ramp at position index. An unknown group changes nothing.
    void setDefaultGroup(const QString& group, const QString& name = QString(), int index = 0);

    QSize sizeHint() const override;

Q_SIGNALS:
    void currentRampChanged();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void fillFromCatalog();
    void addGroupHeader(const QString& group, int row = -1);
    void addRamp(const TZObjects::TERefPtr<TZObjects::TEColorRamp>& ramp, int row = -1);
    int rowOf(const QString& group, const QString& name) const;
    void onCurrentIndexChanged(int index);

    std::vector<TZObjects::TERefPtr<TZObjects::TEColorRamp>> mRamps;
    int mCustomRampRow = -1;
};
