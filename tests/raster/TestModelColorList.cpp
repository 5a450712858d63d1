#include "TestRegistry.h"

#include "TZModelColorList.h"

#include <QAbstractItemModelTester>
#include <QIcon>
#include <QSignalSpy>

using namespace TZObjects;

class TestModelColorList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheModelContractThroughEveryChange()
    {
        TZModelColorList model(QSize(40, 20));
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.appendRow(QColor(Qt::red), QStringLiteral("0.000000,1.000000"));
        model.appendRows({QColor(Qt::green), QColor(Qt::blue)}, {QStringLiteral("b"), QStringLiteral("c")});
        model.setRowColor(1, QColor(Qt::yellow));
        model.setRowColors({QColor(Qt::white), QColor(Qt::gray), QColor(Qt::cyan), QColor(Qt::magenta)});
        model.setRowText(2, QStringLiteral("d"));
        model.clear();
        model.appendRow(QColor(Qt::black), QStringLiteral("e"));
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.columnCount(), 2);
    }

    void columnsHaveTheirHeadersRolesAndFlags()
    {
        TZModelColorList model(QSize(40, 20));
        model.appendRow(QColor(10, 20, 30), QStringLiteral("7"));
        QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Color"));
        QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Value"));

        const QModelIndex color = model.index(0, 0);
        const QModelIndex value = model.index(0, 1);
        QCOMPARE(model.flags(color), Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
        QCOMPARE(model.flags(value), Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled);
        QCOMPARE(model.flags(QModelIndex()), Qt::NoItemFlags);

        QCOMPARE(model.data(value).toString(), QStringLiteral("7"));
        QCOMPARE(model.data(value, Qt::EditRole).toString(), QStringLiteral("7"));
        QVERIFY(!model.data(color).isValid());
        QVERIFY(!model.data(value, Qt::DecorationRole).isValid());
        QVERIFY(!model.data(model.index(0, 1), Qt::ToolTipRole).isValid());

        // The icon is the row's colour across the whole icon size.
        const QIcon icon = model.data(color, Qt::DecorationRole).value<QIcon>();
        const QImage image = icon.pixmap(QSize(40, 20)).toImage();
        QCOMPARE(image.size(), QSize(40, 20));
        QCOMPARE(image.pixelColor(0, 0), QColor(10, 20, 30));
        QCOMPARE(image.pixelColor(39, 19), QColor(10, 20, 30));
    }

    void rowColourIsSourceColourOneOfTheRowsRamp()
    {
        TZModelColorList model(QSize(16, 16));
        TEEvenColorRamp ramp(rgb_color<float>(0, 0, 255), rgb_color<float>(255, 0, 0));
        model.appendRow(ramp, QStringLiteral("x"));
        QCOMPARE(model.rowColor(0), QColor(255, 0, 0));
        // The row keeps its own copy of the ramp.
        ramp.setSourceColor(1, rgb_color<float>(0, 255, 0));
        QCOMPARE(model.rowColor(0), QColor(255, 0, 0));

        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        model.setRowColor(0, QColor(1, 2, 3));
        QCOMPARE(model.rowColor(0), QColor(1, 2, 3));
        QCOMPARE(model.row(0).ramp->getSourceColor(0).toQColor(), QColor(1, 2, 3));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).toModelIndex(), model.index(0, 0));
        QCOMPARE(changed.at(0).at(1).toModelIndex(), model.index(0, 0));
        // The icon follows the new colour.
        const QImage image = model.data(model.index(0, 0), Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
        QCOMPARE(image.pixelColor(8, 8), QColor(1, 2, 3));
    }

    void recolouringManyRowsIsOneChangeOverExactlyThoseRows()
    {
        TZModelColorList model(QSize(16, 16));
        model.appendRows({QColor(Qt::red), QColor(Qt::green), QColor(Qt::blue)},
                         {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        // More colours than rows: the extra one is ignored.
        model.setRowColors({QColor(1, 1, 1), QColor(2, 2, 2), QColor(3, 3, 3), QColor(4, 4, 4)});
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).toModelIndex(), model.index(0, 0));
        QCOMPARE(changed.at(0).at(1).toModelIndex(), model.index(2, 0));
        QCOMPARE(model.rowColor(2), QColor(3, 3, 3));
        const QImage image = model.data(model.index(1, 0), Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
        QCOMPARE(image.pixelColor(8, 8), QColor(2, 2, 2));

        changed.clear();
        model.setRowColors({QColor(9, 9, 9)});
        QCOMPARE(changed.at(0).at(1).toModelIndex(), model.index(0, 0));
        QCOMPARE(model.rowColor(1), QColor(2, 2, 2));
    }

    void outOfRangeRowsAreEmpty()
    {
        TZModelColorList model(QSize(16, 16));
        model.appendRow(QColor(Qt::red), QStringLiteral("a"));
        for (int row : {-1, 1, 100}) {
            QVERIFY(!model.row(row).ramp);
            QVERIFY(model.row(row).text.isEmpty());
            QVERIFY(!model.rowColor(row).isValid());
        }
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        model.setRowColor(1, QColor(Qt::blue));
        model.setRowText(-1, QStringLiteral("b"));
        QCOMPARE(changed.count(), 0);
    }

    void anEditIsAnnouncedAndStoredOnlyByItsReceiver()
    {
        TZModelColorList model(QSize(16, 16));
        model.appendRows({QColor(Qt::red), QColor(Qt::blue)}, {QStringLiteral("a"), QStringLiteral("b")});
        QSignalSpy entered(&model, &TZModelColorList::rowDataChanged);

        // Nobody takes the edit: the text stays.
        QVERIFY(!model.setData(model.index(1, 1), QStringLiteral("new")));
        QCOMPARE(entered.count(), 1);
        QCOMPARE(entered.at(0).at(0).toInt(), 1);
        QCOMPARE(entered.at(0).at(1).toString(), QStringLiteral("new"));
        QCOMPARE(model.row(1).text, QStringLiteral("b"));

        // A receiver that stores it.
        connect(&model, &TZModelColorList::rowDataChanged, &model,
                [&model](int row, const QString& text) { model.setRowText(row, text); });
        QVERIFY(model.setData(model.index(1, 1), QStringLiteral("new")));
        QCOMPARE(model.row(1).text, QStringLiteral("new"));

        // Only edits of the value column count.
        entered.clear();
        QVERIFY(!model.setData(model.index(0, 0), QStringLiteral("x")));
        QVERIFY(!model.setData(model.index(0, 1), QStringLiteral("x"), Qt::DisplayRole));
        QCOMPARE(entered.count(), 0);
    }

    void clearingAnnouncesTheRemovedRows()
    {
        TZModelColorList model(QSize(16, 16));
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        model.clear();
        QCOMPARE(removed.count(), 0);
        model.appendRows({QColor(Qt::red), QColor(Qt::green), QColor(Qt::blue)},
                         {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        model.clear();
        QCOMPARE(removed.count(), 1);
        QCOMPARE(removed.at(0).at(1).toInt(), 0);
        QCOMPARE(removed.at(0).at(2).toInt(), 2);
        QCOMPARE(model.rowCount(), 0);
    }
};

TZ_REGISTER_TEST(TestModelColorList)
#include "TestModelColorList.moc"
