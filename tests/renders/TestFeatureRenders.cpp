#include "TestRegistry.h"

#include "RenderFixtures.h"

#include "renders/TECategorizedByManyFieldsSymbolRender.h"
#include "renders/TEDrawContext.h"
#include "renders/TEFileFunc.h"
#include "renders/TEFourColorTheoremRender.h"
#include "renders/TEGradingSymbolRender.h"
#include "renders/TEMatchToSymbolsRender.h"
#include "renders/TEPieDiagramRender.h"
#include "renders/TERuleBasedSymbolRender.h"
#include "renders/TESingleSymbolRender.h"
#include "renders/TEStackDiagramRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSystem.h"

#include <QImage>
#include <QPainter>

using namespace TZObjects;
using namespace RenderFixtures;

namespace {

const double AnyScale = 5000.0;

QString StyleFor(const TEFeatureRender& render, const Attributes& attributes, double scale = AnyScale,
                 bool ignoreScaleRange = false)
{
    TERefPtr<TEFeature> feature = MakeFeature(attributes);
    return ColorName(render.GetStyleByFeature(feature.get(), scale, ignoreScaleRange));
}

Attributes Kind(const char* kind)
{
    Attributes a;
    a.kind = kind;
    return a;
}

Attributes Pop(double pop)
{
    Attributes a;
    a.pop = pop;
    return a;
}

// Catch-all grey, "city" red (drawn between 1:1000 and 1:50000), "town"
// green, "hamlet" blue but hidden.
TERefPtr<TECategorizedSymbolRender> PlacesByKind()
{
    auto render = MakeRef<TECategorizedSymbolRender>(L"kind");
    render->AddCategory(TECategorizedSymbolRender::AllOtherValues, TECategorizedSymbolRender::AllOtherValues,
                        PointStyle(128, 128, 128));
    render->AddCategory(L"city", L"City", PointStyle(255, 0, 0), true, 1000, 50000);
    render->AddCategory(L"town", L"Town", PointStyle(0, 255, 0));
    render->AddCategory(L"hamlet", L"Hamlet", PointStyle(0, 0, 255));
    render->GetCategoryRenderItem(3)->SetVisible(false);
    return render;
}

} // namespace

class TestFeatureRenders : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void singleSymbolDrawsEveryFeatureWithItsOneStyle()
    {
        TESingleSymbolRender render(PointStyle(1, 2, 3));
        QCOMPARE(StyleFor(render, Kind("city")), QStringLiteral("#010203"));
        QCOMPARE(StyleFor(render, Attributes()), QStringLiteral("#010203"));
        QCOMPARE(render.GetType(), TEString(L"SingleSymbol"));
    }

    void categorizedPicksTheStyleOfTheFeaturesCategory_data()
    {
        QTest::addColumn<bool>("showOthers");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<double>("scale");
        QTest::addColumn<bool>("ignoreScale");
        QTest::addColumn<QString>("expected");

        QTest::newRow("matching value") << true << "town" << AnyScale << false << "#00ff00";
        QTest::newRow("other value falls to catch-all") << true << "village" << AnyScale << false << "#808080";
        QTest::newRow("other value, others off") << false << "village" << AnyScale << false << "null";
        QTest::newRow("unset value falls to catch-all") << true << QString() << AnyScale << false << "#808080";
        QTest::newRow("matching value, others off") << false << "town" << AnyScale << false << "#00ff00";
        QTest::newRow("hidden category draws nothing") << true << "hamlet" << AnyScale << false << "null";
        QTest::newRow("inside scale range") << true << "city" << 50000.0 << false << "#ff0000";
        QTest::newRow("below scale range") << true << "city" << 999.0 << false << "null";
        QTest::newRow("above scale range") << true << "city" << 50001.0 << false << "null";
        QTest::newRow("scale range ignored") << true << "city" << 1.0 << true << "#ff0000";
        QTest::newRow("values match exactly") << true << "City" << AnyScale << false << "#808080";
    }

    void categorizedPicksTheStyleOfTheFeaturesCategory()
    {
        QFETCH(bool, showOthers);
        QFETCH(QString, kind);
        QFETCH(double, scale);
        QFETCH(bool, ignoreScale);
        QFETCH(QString, expected);

        TERefPtr<TECategorizedSymbolRender> render = PlacesByKind();
        render->SetIsShowOtherValue(showOthers);
        const QByteArray utf8 = kind.toUtf8();
        Attributes a = Kind(kind.isNull() ? nullptr : utf8.constData());
        QCOMPARE(StyleFor(*render, a, scale, ignoreScale), expected);
    }

    void categorizedWithoutCatchAllDrawsOnlyItsCategories()
    {
        auto render = MakeRef<TECategorizedSymbolRender>(L"kind");
        render->AddCategory(L"town", L"Town", PointStyle(0, 255, 0));
        QCOMPARE(StyleFor(*render, Kind("village")), QStringLiteral("null"));
        QCOMPARE(ColorName(render->GetStyle(L"town")), QStringLiteral("#00ff00"));
        QCOMPARE(ColorName(render->GetStyle(L"village")), QStringLiteral("null"));
    }

    void categorizedFirstCategoryOfADuplicatedValueWins()
    {
        auto render = MakeRef<TECategorizedSymbolRender>(L"kind");
        render->AddCategory(L"town", L"Town", PointStyle(0, 255, 0));
        render->AddCategory(L"town", L"Town again", PointStyle(0, 0, 255));
        QCOMPARE(StyleFor(*render, Kind("town")), QStringLiteral("#00ff00"));
        render->RemoveCategory(0);
        QCOMPARE(StyleFor(*render, Kind("town")), QStringLiteral("#0000ff"));
    }

    void manyFieldsKeyJoinsTheFieldTextsWithCommas()
    {
        auto render = MakeRef<TECategorizedByManyFieldsSymbolRender>(L"kind,code");
        render->AddCategory(L"town,3", L"", PointStyle(0, 255, 0));
        render->AddCategory(L"town,4", L"", PointStyle(0, 0, 255));
        Attributes a = Kind("town");
        a.code = 3;
        QCOMPARE(StyleFor(*render, a), QStringLiteral("#00ff00"));
        a.code = 4;
        QCOMPARE(StyleFor(*render, a), QStringLiteral("#0000ff"));
        a.code = 5;
        QCOMPARE(StyleFor(*render, a), QStringLiteral("null"));
        QCOMPARE(render->GetType(), TEString(L"UniqueValuesManyFields"));
        const std::vector<TEString> used = render->GetUsedAttributes();
        QCOMPARE(int(used.size()), 2);
        QCOMPARE(used[0], TEString(L"kind"));
        QCOMPARE(used[1], TEString(L"code"));

        TERefPtr<TEFeatureRender> reopened = TEFileFunc::OpenFeatureRender(TEFileFunc::SaveRender(render.get()));
        QVERIFY(reopened);
        a.code = 4;
        QCOMPARE(StyleFor(*reopened, a), QStringLiteral("#0000ff"));
    }

    void matchToSymbolsFillsMissingStylesFromItsDatabase()
    {
        auto db = MakeRef<TEStyleDB>(L"Render test places");
        TERefPtr<TEStyle> city = PointStyle(1, 2, 3);
        city->SetName(L"city");
        QVERIFY(db->AddStyle(city));
        QVERIFY(TEStyleSystem::GetInstance()->AddStyleDB(db));

        TEMatchToSymbolsRender render(L"kind");
        render.setSymbolDB(L"Render test places");
        render.AddCategory(L"city", L"City", nullptr);
        render.AddCategory(L"City", L"Other case", nullptr);
        render.AddCategory(L"town", L"Town", PointStyle(0, 255, 0));
        QCOMPARE(render.ResolveStylesFromSymbolDB(TEStyle::PointStyle), 1);
        QCOMPARE(StyleFor(render, Kind("city")), QStringLiteral("#010203"));
        QVERIFY(render.GetStyle(L"city").get() != city.get());
        QCOMPARE(StyleFor(render, Kind("City")), QStringLiteral("null"));
        QCOMPARE(render.ResolveStylesFromSymbolDB(TEStyle::LineStyle), 0);
    }

    void gradingFindsTheFirstClosedRangeHoldingTheValue_data()
    {
        QTest::addColumn<double>("pop");
        QTest::addColumn<bool>("popSet");
        QTest::addColumn<QString>("expected");

        QTest::newRow("lower bound of first class") << 0.0 << true << "#ff0000";
        QTest::newRow("inside first class") << 5.5 << true << "#ff0000";
        QTest::newRow("shared bound goes to first class") << 10.0 << true << "#ff0000";
        QTest::newRow("just above shared bound") << 10.000001 << true << "#00ff00";
        QTest::newRow("upper bound of last class") << 20.0 << true << "#00ff00";
        QTest::newRow("full-width comma range") << 25.0 << true << "#0000ff";
        QTest::newRow("above every class") << 31.0 << true << "#808080";
        QTest::newRow("below every class") << -1.0 << true << "#808080";
        QTest::newRow("null value") << 0.0 << false << "#808080";
    }

    void gradingFindsTheFirstClosedRangeHoldingTheValue()
    {
        QFETCH(double, pop);
        QFETCH(bool, popSet);
        QFETCH(QString, expected);

        auto render = MakeRef<TEGradingSymbolRender>(L"pop");
        render->AddCategory(TECategorizedSymbolRender::AllOtherValues, TECategorizedSymbolRender::AllOtherValues,
                            PointStyle(128, 128, 128));
        render->AddCategory(L"0,10", L"", PointStyle(255, 0, 0));
        render->AddCategory(L"10,20", L"", PointStyle(0, 255, 0));
        render->AddCategory(L"20\xFF0C" L"30", L"", PointStyle(0, 0, 255));
        render->AddCategory(L"not a range", L"", PointStyle(1, 1, 1));
        Attributes a = Pop(pop);
        a.popSet = popSet;
        QCOMPARE(StyleFor(*render, a), expected);
    }

    void ruleFiltersDrawEveryMatchingRuleInOrder_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<double>("pop");
        QTest::addColumn<double>("scale");
        QTest::addColumn<QString>("expected");

        QTest::newRow("first and catch-all") << "city" << 2000.0 << AnyScale << "#ff0000,#0000ff";
        QTest::newRow("second and catch-all") << "town" << 50.0 << AnyScale << "#00ff00,#0000ff";
        QTest::newRow("first out of scale") << "city" << 2000.0 << 1e6 << "#0000ff";
        QTest::newRow("catch-all alone") << "village" << 1.0 << AnyScale << "#0000ff";
        QTest::newRow("three rules") << "town" << 2000.0 << AnyScale << "#ffff00,#00ff00,#0000ff";
    }

    void ruleFiltersDrawEveryMatchingRuleInOrder()
    {
        QFETCH(QString, kind);
        QFETCH(double, pop);
        QFETCH(double, scale);
        QFETCH(QString, expected);

        TERuleBasedSymbolRender render;
        auto big = MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(255, 0, 0), L"kind = 'city' AND pop > 1000");
        big->SetScaleFilter(true);
        big->SetMinimumScale(100000);
        big->SetMaximumScale(1);
        render.AddRule(big);
        render.AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(255, 255, 0), L"pop >= 2000 AND kind <> 'city'"));
        render.AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(0, 255, 0), L"kind IN ('town') OR pop < 0"));
        render.AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(0, 0, 255), L""));

        const QByteArray utf8 = kind.toUtf8();
        Attributes a = Kind(utf8.constData());
        a.pop = pop;
        const TERefPtr<TEFeature> feature = MakeFeature(a);
        const TERefPtr<TEStyle> style = render.GetStyleByFeature(feature.get(), scale);
        QStringList colours;
        if (const auto* multi = dynamic_cast<const TEStyleMultiLayer*>(style.get())) {
            for (int i = 0; i < multi->GetLayerCount(); ++i)
                colours << ColorName(TERefPtr<TEStyle>(multi->GetLayer(i)));
        } else {
            colours << ColorName(style);
        }
        QCOMPARE(colours.join(QLatin1Char(',')), expected);
        // A second feature of the same rules gets the same symbol, not a new one.
        QVERIFY(render.GetStyleByFeature(MakeFeature(a).get(), scale) == style);
    }

    void ruleStyleChangesReachTheCombinedSymbol()
    {
        TERuleBasedSymbolRender render;
        auto first = MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(255, 0, 0), L"kind = 'city'");
        render.AddRule(first);
        render.AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(0, 0, 255), L""));
        const TERefPtr<TEFeature> city = MakeFeature(Kind("city"));
        QCOMPARE(StyleFor(render, Kind("city")), QStringLiteral("#ff0000"));
        first->SetStyle(PointStyle(0, 255, 0));
        const TERefPtr<TEStyle> style = render.GetStyleByFeature(city.get(), AnyScale);
        const auto* multi = dynamic_cast<const TEStyleMultiLayer*>(style.get());
        QVERIFY(multi);
        QCOMPARE(multi->GetLayerCount(), 2);
        QCOMPARE(ColorName(TERefPtr<TEStyle>(multi->GetLayer(0))), QStringLiteral("#00ff00"));
        // A rule without a symbol draws nothing and is left out.
        first->SetStyle(TERefPtr<TEStyle>());
        QCOMPARE(StyleFor(render, Kind("city")), QStringLiteral("#0000ff"));
    }

    void invalidRuleMatchesNothingAndSaysWhy()
    {
        TERuleBasedSymbolRender render;
        auto broken = MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(255, 0, 0), L"kind = = 'city'", L"Cities");
        render.AddRule(broken);
        auto distant = MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(0, 255, 0), L"nosuchfield > 3");
        distant->SetScaleFilter(true);
        distant->SetMinimumScale(1);
        distant->SetMaximumScale(10);
        render.AddRule(distant);
        render.AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(0, 0, 255), L"kind = 'city'"));
        QVERIFY(render.GetLastError().IsEmpty());
        // The broken rule matches nothing, the others still do.
        QCOMPARE(StyleFor(render, Kind("city")), QStringLiteral("#0000ff"));
        QVERIFY(!broken->GetError().IsEmpty());
        // Out of its scale range a rule's filter is never compiled, so a
        // broken filter there costs nothing and reports nothing.
        QVERIFY(distant->GetError().IsEmpty());
        const QString error = render.GetLastError().toQString();
        QVERIFY2(error.startsWith(QStringLiteral("rule 1 \"Cities\": ")), qPrintable(error));
        QVERIFY2(!error.contains(QStringLiteral("rule 2")), qPrintable(error));

        QCOMPARE(StyleFor(render, Kind("city"), 5.0), QStringLiteral("#0000ff"));
        QVERIFY(render.GetLastError().toQString().contains(QStringLiteral("; rule 2: ")));

        broken->SetExpression(L"kind = 'city'");
        distant->SetExpression(L"kind = 'none'");
        QCOMPARE(StyleFor(render, Kind("city")), QStringLiteral("#ff0000"));
        QVERIFY(broken->GetError().IsEmpty());
        QVERIFY(render.GetLastError().IsEmpty());
    }

    void ruleReportsTheFieldsAndGeometryItReads()
    {
        TERuleBasedSymbolRender render;
        render.AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(1, 1, 1),
                                                             L"\"kind\" LIKE 'c%' AND pop > 3 AND kind IS NOT NULL"));
        render.AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(1, 1, 1), L"code IN (1, 2)"));
        const std::vector<TEString> used = render.GetUsedAttributes();
        QCOMPARE(int(used.size()), 3);
        QCOMPARE(used[0], TEString(L"kind"));
        QCOMPARE(used[1], TEString(L"pop"));
        QCOMPARE(used[2], TEString(L"code"));
        QVERIFY(!render.FilterNeedsGeometry());
        render.AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(1, 1, 1), L"OGR_GEOM_AREA > 10"));
        QVERIFY(render.FilterNeedsGeometry());
    }

    void fourColorRecoloursTheDefaultStyleByFeatureId()
    {
        TEFourColorTheoremRender render;
        TERefPtr<TEStyle> defaultStyle = PointStyle(50, 50, 50);
        render.setDefaultStyle(defaultStyle);
        render.setColorMap({{1, TEColor(255, 0, 0)}, {2, TEColor(0, 0, 255)}, {3, TEColor(255, 0, 0)}});

        Attributes a;
        a.id = 1;
        TERefPtr<TEFeature> first = MakeFeature(a);
        QCOMPARE(ColorName(render.GetStyleByFeature(first.get(), AnyScale)), QStringLiteral("#ff0000"));
        a.id = 2;
        QCOMPARE(StyleFor(render, a), QStringLiteral("#0000ff"));
        a.id = 99;
        QCOMPARE(StyleFor(render, a), QStringLiteral("#323232"));
        QCOMPARE(ColorName(defaultStyle), QStringLiteral("#323232"));

        a.id = 3;
        TERefPtr<TEFeature> third = MakeFeature(a);
        QCOMPARE(render.GetStyleByFeature(third.get(), AnyScale), render.GetStyleByFeature(first.get(), AnyScale));
    }

    void diagramDrawsItsBackgroundRendersStyle()
    {
        TEPieDiagramRender pie;
        Attributes a = Kind("town");
        QCOMPARE(StyleFor(pie, a), QStringLiteral("null"));
        TERefPtr<TECategorizedSymbolRender> background = PlacesByKind();
        pie.SetBackgroundRender(background.get());
        QCOMPARE(StyleFor(pie, a), QStringLiteral("#00ff00"));
        pie.SetBackgroundRender(&pie);
        QCOMPARE(pie.GetBackgroundRender().get(), static_cast<TEFeatureRender*>(background.get()));
    }

    void diagramsDrawTheirItemsShares()
    {
        auto fill = [](int r, int g, int b) {
            auto style = MakeRef<TEStyleSimpleFill>();
            style->SetColor(TEColor(r, g, b));
            return style;
        };
        // pop 3 (red) and code 1 (blue): red takes three quarters clockwise
        // from twelve o'clock, blue the top-left quarter.
        Attributes a;
        a.pop = 3;
        a.code = 1;
        TERefPtr<TEFeature> feature = MakeFeature(a);
        // At 72 DPI a point is a pixel.
        TEDrawContext context;
        context.dpi = 72.0;

        TEPieDiagramRender pie;
        pie.AddItem(L"pop", L"", fill(255, 0, 0));
        pie.AddItem(L"code", L"", fill(0, 0, 255));
        pie.SetRadius(40);
        QImage image(100, 100, QImage::Format_ARGB32);
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            QVERIFY(pie.DrawDiagram(&painter, feature.get(), QPointF(50, 50), context));
        }
        QCOMPARE(image.pixel(30, 30), qRgb(0, 0, 255));
        QCOMPARE(image.pixel(70, 70), qRgb(255, 0, 0));
        QCOMPARE(image.pixel(70, 30), qRgb(255, 0, 0));
        QCOMPARE(image.pixel(5, 5), qRgb(255, 255, 255));

        // Segments of 3 and 1 in an 80-pixel bar: red 60 pixels, blue 20 above.
        TEStackDiagramRender stack;
        stack.AddItem(L"pop", L"", fill(255, 0, 0));
        stack.AddItem(L"code", L"", fill(0, 0, 255));
        stack.SetWidth(20);
        stack.SetMaxHeight(80);
        image.fill(Qt::white);
        {
            QPainter painter(&image);
            QVERIFY(stack.DrawDiagram(&painter, feature.get(), QPointF(50, 90), context));
        }
        QCOMPARE(image.pixel(50, 60), qRgb(255, 0, 0));
        QCOMPARE(image.pixel(50, 20), qRgb(0, 0, 255));
        QCOMPARE(image.pixel(50, 5), qRgb(255, 255, 255));

        Attributes empty;
        QVERIFY(!stack.DrawDiagram(nullptr, MakeFeature(empty).get(), QPointF(), context));
    }

    void replaceStyleSwapsEverySlotHoldingIt()
    {
        TERefPtr<TECategorizedSymbolRender> render = PlacesByKind();
        TERefPtr<TEStyle> town = render->GetStyle(L"town");
        QVERIFY(render->ReplaceStyle(town.get(), PointStyle(9, 9, 9)));
        QCOMPARE(StyleFor(*render, Kind("town")), QStringLiteral("#090909"));
        QVERIFY(!render->ReplaceStyle(town.get(), PointStyle(8, 8, 8)));
        QCOMPARE(int(render->GetStyles().size()), 4);
    }

    void allPriorityListsStyleAndLayerPrioritiesOnce()
    {
        auto multi = MakeRef<TEStyleMultiLayer>(TEStyle::PointStyle);
        TERefPtr<TEStyle> low = PointStyle(1, 1, 1);
        low->SetPriority(3);
        TERefPtr<TEStyle> high = PointStyle(2, 2, 2);
        high->SetPriority(7);
        QVERIFY(multi->AddLayer(low));
        QVERIFY(multi->AddLayer(high));
        auto render = MakeRef<TECategorizedSymbolRender>(L"kind");
        render->AddCategory(L"a", L"", multi);
        TERefPtr<TEStyle> other = PointStyle(3, 3, 3);
        other->SetPriority(3);
        render->AddCategory(L"b", L"", other);
        QCOMPARE(render->GetAllPriority(), (std::vector<int>{0, 3, 7}));
        QCOMPARE(render->GetStyleType(), TEStyle::PointStyle);
    }

    void rotationAngleFollowsFieldDirectionAndRandomRange()
    {
        TESingleSymbolRender render(PointStyle(1, 1, 1));
        Attributes a;
        a.id = 12;
        a.angle = 30;
        TERefPtr<TEFeature> feature = MakeFeature(a);
        QCOMPARE(render.GetRotationAngle(feature.get()), 0.0);

        render.SetIsRotateByField(true);
        render.SetRotateField(L"angle");
        QCOMPARE(render.GetRotationAngle(feature.get()), -30.0);
        render.SetIsRotateByClockWise(false);
        QCOMPARE(render.GetRotationAngle(feature.get()), 30.0);
        QCOMPARE(render.GetUsedAttributes(), std::vector<TEString>{TEString(L"angle")});

        render.SetRotateField(TEFeatureRender::RandomRotateField);
        render.SetRotateRandomRange(100, 110);
        QVERIFY(render.GetUsedAttributes().empty());
        const double angle = render.GetRotationAngle(feature.get());
        QVERIFY2(angle >= 100 && angle <= 110, qPrintable(QString::number(angle)));
        QCOMPARE(render.GetRotationAngle(feature.get()), angle);
        bool differs = false;
        for (int id = 0; id < 20 && !differs; ++id) {
            Attributes other;
            other.id = id;
            differs = render.GetRotationAngle(MakeFeature(other).get()) != angle;
        }
        QVERIFY(differs);
    }
};

TZ_REGISTER_TEST(TestFeatureRenders)
#include "TestFeatureRenders.moc"
