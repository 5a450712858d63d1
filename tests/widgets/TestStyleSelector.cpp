#include "TestRegistry.h"
#include "ModalAnswer.h"

#include "widgets/TZColorBtn.h"
#include "widgets/TZStyleSelectorDialog.h"

#include "symbology/TEStyleDB.h"
#include "symbology/TEStyleLine.h"
#include "symbology/TEStyleSimplePoint.h"
#include "symbology/TEStyleSystem.h"

#include <QDoubleSpinBox>
#include <QListWidget>

using namespace TZObjects;

class TestStyleSelector : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        bool anyPoint = false;
        for (TEStyleDB* db : TEStyleSystem::GetInstance()->GetStyleDBs())
            anyPoint = anyPoint || !db->GetStyles(TEStyle::PointStyle).empty();
        QVERIFY2(anyPoint, "the shipped style databases hold no point symbol");
    }

    void cancelReturnsNull()
    {
        TEStyleDB* db = reinterpret_cast<TEStyleDB*>(0x1);
        ModalAnswer answer("QDialog", ModalAnswer::click(QDialogButtonBox::Cancel));
        QVERIFY(!selectStyle(TEStyle::LineStyle, db));
        QVERIFY(answer.answered());
        QCOMPARE(answer.dialogClass(), QStringLiteral("TZStyleSelectorDialog"));
        QVERIFY(!db);
    }

    void okReturnsACopyOfTheChosenStyleAndItsDatabase()
    {
        QString chosenName;
        ModalAnswer answer("QDialog", ModalAnswer::click(QDialogButtonBox::Ok, [&](QWidget* dialog) {
            auto* list = dialog->findChild<QListWidget*>(QStringLiteral("mListStyles"));
            list->setCurrentRow(list->count() - 1);
            chosenName = list->currentItem()->text();
        }));
        TEStyleDB* db = nullptr;
        TERefPtr<TEStyle> style(selectStyle(TEStyle::PointStyle, db));
        QVERIFY(answer.answered());
        QVERIFY(style);
        QCOMPARE(style->GetStyleType(), TEStyle::PointStyle);
        QVERIFY(db);
        TEStyle* original = db->FindStyle(TEStyle::PointStyle, style->GetName());
        QVERIFY(original);
        QVERIFY(original != style.get());
        QVERIFY(chosenName == style->GetName().toQString() || chosenName == style->GetAliasName().toQString());
    }

    void adjustingAStyleEditsOnlyTheCopyAndForgetsTheDatabase()
    {
        TERefPtr<TEStyleSimplePoint> start = MakeRef<TEStyleSimplePoint>();
        start->SetColor(TEColor(0, 0, 255));
        start->SetSize(2.0);
        ModalAnswer answer("QDialog", ModalAnswer::click(QDialogButtonBox::Ok, [](QWidget* dialog) {
            dialog->findChild<TZColorBtn*>(QStringLiteral("mColorBtn"))->setColor(qRgb(200, 10, 10));
            dialog->findChild<QDoubleSpinBox*>(QStringLiteral("mSpinBoxSize"))->setValue(4.5);
            dialog->findChild<QDoubleSpinBox*>(QStringLiteral("mSpinBoxAngle"))->setValue(30);
        }));
        TEStyleDB* db = reinterpret_cast<TEStyleDB*>(0x1);
        TERefPtr<TEStyle> edited(selectStyle(start.get(), db));
        QVERIFY(answer.answered());
        QVERIFY(!db);
        auto* point = dynamic_cast<TEStyleSimplePoint*>(edited.get());
        QVERIFY(point);
        QVERIFY(point != start.get());
        QCOMPARE(point->GetColor(), TEColor(200, 10, 10));
        QCOMPARE(point->GetWidth(), 4.5);
        QCOMPARE(point->GetAngle(), 30.0);
        QCOMPARE(start->GetColor(), TEColor(0, 0, 255));
        QCOMPARE(start->GetWidth(), 2.0);
    }

    void lineStylesOfferWidthButNoAngle()
    {
        TZStyleSelectorDialog dialog(TEStyle::LineStyle, nullptr);
        dialog.show();
        auto* list = dialog.findChild<QListWidget*>(QStringLiteral("mListStyles"));
        QVERIFY(list->count() > 0);
        QVERIFY(dialog.style());
        QCOMPARE(dialog.style()->GetStyleType(), TEStyle::LineStyle);
        QVERIFY(dialog.findChild<QDoubleSpinBox*>(QStringLiteral("mSpinBoxSize"))->isVisible());
        QVERIFY(!dialog.findChild<QDoubleSpinBox*>(QStringLiteral("mSpinBoxAngle"))->isVisible());
    }
};

TZ_REGISTER_TEST(TestStyleSelector)
#include "TestStyleSelector.moc"
