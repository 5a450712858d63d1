#pragma once

#include "TZRenderPanel.h"

#include <QStringList>

#include <stdexcept>

// A catalog panel for the dock's tests: it has the key, title and layer
// types it is given, counts its resets and answers onApply() with a value the
// test chooses (or throws, when told to), logging both into a shared journal.
class FakeRenderPanel : public TZRenderPanel
{
    Q_OBJECT
public:
    FakeRenderPanel(QWidget* parent, const QString& key, const QString& title,
                    const QList<TZObjects::TELayer::LayerType>& types, QStringList* journal = nullptr)
        : TZRenderPanel(parent), mKey(key), mTitle(title), mJournal(journal)
    {
        mSupportLayerType = types;
    }

    QString name() const override { return mKey; }
    QString title() const override { return mTitle; }

    bool onApply() override
    {
        ++applyCount;
        if (mJournal)
            mJournal->append(QStringLiteral("apply ") + mKey);
        if (applyThrows)
            throw std::runtime_error("render could not be built");
        return applyResult;
    }
    void onReset() override
    {
        ++resetCount;
        if (mJournal)
            mJournal->append(QStringLiteral("reset ") + mKey);
    }

    bool applyResult = true;
    bool applyThrows = false;
    int applyCount = 0;
    int resetCount = 0;

private:
    QString mKey;
    QString mTitle;
    QStringList* mJournal = nullptr;
};
