#include "TZControlRender.h"

#include "TZRenderPanel.h"
#include "TZRenderPanelClusterDiagram.h"
#include "TZRenderPanelDotDensityDiagram.h"
#include "TZRenderPanelFourColorTheorem.h"
#include "TZRenderPanelGradingSymbol.h"
#include "TZRenderPanelGraduatedSymbolsDiagram.h"
#include "TZRenderPanelHistogramDiagram.h"
#include "TZRenderPanelMatchToSymbolsInAStyle.h"
#include "TZRenderPanelPieDiagram.h"
#include "TZRenderPanelRuleBased.h"
#include "TZRenderPanelSingleSymbol.h"
#include "TZRenderPanelStackDiagram.h"
#include "TZRenderPanelThermodynamicDiagram.h"
#include "TZRenderPanelUniqueValues.h"
#include "TZRenderPanelUniqueValuesByManyFields.h"
#include "TZRenderTranslation.h"
#include "TzImageRenderClassDialog.h"
#include "TzImageRenderColormapDialog.h"
#include "TzImageRenderStretchDialog.h"
#include "TzImageRenderUniqueDialog.h"
#include "TzImgRenderMultiStretchDialog.h"
#include "TzImgRenderRGBCompositeDialog.h"
#include "ui_TZControlRender.h"

#include "data/TEFeatureLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TEFeatureRender.h"
#include "renders/TEImageRender.h"
#include "renders/TESingleBandImageRender.h"
#include "view/TEMapView.h"
#include "view/TEMapViewManager.h"

#include <QMutexLocker>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabBar>

#include <algorithm>

using namespace TZObjects;

namespace {

// Runs a slot's body so that no exception leaves the dock. The dock shows no
// messages of its own (panels tell the user about their failures); a failure
// that escapes a panel counts as nothing applied, so nothing is announced.
template <class Body>
void runGuarded(Body&& body)
{
    try {
        body();
    } catch (...) {
    }
}

} // namespace

TZControlRender* TZControlRender::instance(QWidget* parent)
{
    // Guarded so that a host which destroyed the dock along with its parent
    // gets a new dock instead of a dangling pointer.
    static QPointer<TZControlRender> dock;
    if (!dock) {
        // The texts in the user's language, unless the host chose one.
        if (TZRenderTranslation::installedFile().isEmpty())
            TZRenderTranslation::install();
        dock = new TZControlRender(parent);
    }
    return dock;
}

TZControlRender::TZControlRender(QWidget* parent)
    : TZDockWidget(parent, Qt::WindowFlags())
    , mUi(std::make_unique<Ui::TZControlRender>())
{
    mUi->setupUi(this);
    nameButtons();
    setupConnection();
    initRenderCatalog();
    mUi->mTabWidgetStyle->tabBar()->hide();
}

TZControlRender::~TZControlRender()
{
    clear();
}

void TZControlRender::nameButtons()
{
    mUi->mButtonBox->button(QDialogButtonBox::Apply)->setText(tr("Apply"));
    mUi->mButtonBox->button(QDialogButtonBox::Reset)->setText(tr("Reset"));
}

void TZControlRender::changeEvent(QEvent* event)
{
    TZDockWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    // A translation installed while the dock exists (a host that loads one
    // after making its main window, the dock among its children).
    mUi->retranslateUi(this);
    // The button box hears of the change after the dock and then gives its
    // standard buttons Qt's own texts, so they are named again afterwards.
    QMetaObject::invokeMethod(this, &TZControlRender::nameButtons, Qt::QueuedConnection);
}

void TZControlRender::setLayer(TELayer* layer)
{
    QMutexLocker locker(&mLayerLock);
    mLayer = TERefPtr<TELayer>(layer);
    if (layer)
        mUi->mLineEditLayerNames->setText(layer->GetLayerName().toQString());
}

void TZControlRender::clear()
{
    {
        QMutexLocker locker(&mLayerLock);
        mLayer = nullptr;
    }
    mUi->mComboBoxRenderStyle->clear();
    mRenderTitles.clear();
    for (TZRenderPanel* panel : mRenderPanels)
        delete panel;
    mRenderPanels.clear();
}

void TZControlRender::initRenderCatalog()
{
    clear();
    mRenderTitles.append(tr("Not to render"));
    addNoRenderEntry();

    // Panels in catalog order (the order of the combo box): single symbol,
    // unique values, unique values by many fields, grading symbol, graduated
    // symbols diagram, match to symbols in a style, rule-based, four colour,
    // heat map, pie, histogram, stack, dot density, cluster, raster class,
    // raster stretch, raster unique, raster colour map, raster multi-band
    // stretch, raster RGB composite.
    addRender(new TZRenderPanelSingleSymbol(this));
    addRender(new TZRenderPanelUniqueValues(this));
    addRender(new TZRenderPanelUniqueValuesByManyFields(this));
    addRender(new TZRenderPanelGradingSymbol(this));
    addRender(new TZRenderPanelGraduatedSymbolsDiagram(this));
    addRender(new TZRenderPanelMatchToSymbolsInAStyle(this));
    addRender(new TZRenderPanelRuleBased(this));
    addRender(new TZRenderPanelFourColorTheorem(this));
    addRender(new TZRenderPanelThermodynamicDiagram(this));
    addRender(new TZRenderPanelPieDiagram(this));
    addRender(new TZRenderPanelHistogramDiagram(this));
    addRender(new TZRenderPanelStackDiagram(this));
    addRender(new TZRenderPanelDotDensityDiagram(this));
    addRender(new TZRenderPanelClusterDiagram(this));
    addRender(new TzImageRenderClassDialog(this));
    addRender(new TzImageRenderStretchDialog(this));
    addRender(new TzImageRenderUniqueDialog(this));
    addRender(new TzImageRenderColormapDialog(this));
    addRender(new TzImgRenderMultiStretchDialog(this));
    addRender(new TzImgRenderRGBCompositeDialog(this));
}

void TZControlRender::addRender(TZRenderPanel* panel)
{
    if (!panel)
        return;

    const QString name = panel->name();
    // Two stretch pages may share the key "ImageStretch" on purpose.
    if (name != QLatin1String("ImageStretch")) {
        for (TZRenderPanel* registered : mRenderPanels) {
            if (registered->name() == name) {
                delete panel;
                return;
            }
        }
    }

    mRenderPanels.push_back(panel);
    for (TELayer::LayerType type : panel->supportLayerType()) {
        QList<TZRenderPanel*>& panels = mLayerTypeIndex[type];
        if (!panels.contains(panel))
            panels.append(panel);
    }

    const QString title = panel->title();
    mRenderTitles.append(title);
    mUi->mTabWidgetStyle->addTab(panel, title);
}

void TZControlRender::setupConnection()
{
    connect(mUi->mButtonBox->button(QDialogButtonBox::Apply), SIGNAL(clicked(bool)), this, SLOT(onApply()));
    connect(mUi->mButtonBox->button(QDialogButtonBox::Reset), SIGNAL(clicked(bool)), this, SLOT(onReset()));
    connect(mUi->mComboBoxRenderStyle, SIGNAL(currentIndexChanged(int)), this, SLOT(switchToTab(int)));
}

bool TZControlRender::getStyleType(TEStyle::StyleType& type)
{
    if (!mLayer)
        return false;
    switch (mLayer->GetLayerType()) {
    case TELayer::LT_Point:
    case TELayer::LT_MultiPoint:
        type = TEStyle::PointStyle;
        break;
    case TELayer::LT_Line:
        type = TEStyle::LineStyle;
        break;
    default:
        type = TEStyle::FillStyle;
        break;
    }
    return true;
}

void TZControlRender::addNoRenderEntry()
{
    mUi->mComboBoxRenderStyle->addItem(QIcon(), tr("Not to render"),
                                       QVariant(qulonglong(mUi->mTabNoRender->winId())));
}

TZRenderPanel* TZControlRender::findPanel(const QString& name) const
{
    if (name.isEmpty())
        return nullptr;
    const auto found = std::find_if(mRenderPanels.begin(), mRenderPanels.end(),
                                    [&name](TZRenderPanel* panel) { return panel->name() == name; });
    return found == mRenderPanels.end() ? nullptr : *found;
}

void TZControlRender::showLayerStyle()
{
    showLayerStyle(0);
}

void TZControlRender::showLayerStyle(int index)
{
    runGuarded([&] {
        QComboBox* combo = mUi->mComboBoxRenderStyle;
        QTabWidget* tabs = mUi->mTabWidgetStyle;
        if (index < 0) {
            combo->clear();
            addNoRenderEntry();
            return;
        }
        if (!mLayer) {
            tabs->setCurrentIndex(0);
            return;
        }

        const auto entry = mLayerTypeIndex.find(mLayer->GetLayerType());
        if (entry == mLayerTypeIndex.end()) {
            // Blocked, because the entry added to the emptied box would
            // otherwise switch to the no-render page; the page stays as it is.
            const QSignalBlocker blocker(combo);
            if (combo->count() > 0)
                combo->clear();
            addNoRenderEntry();
            return;
        }

        {
            const QSignalBlocker blocker(combo);
            combo->clear();
            if (mLayer->IsFeatureLayer())
                addNoRenderEntry();
            for (TZRenderPanel* panel : entry->second)
                combo->addItem(panel->title(), QVariant(qulonglong(panel->winId())));
        }

        if (mLayer->IsFeatureLayer()) {
            const TERefPtr<TEFeatureRender> render = mLayer->GetRender().cast<TEFeatureRender>();
            if (!render) {
                combo->setCurrentIndex(0);
                tabs->setCurrentWidget(mUi->mTabNoRender);
                return;
            }
            TZRenderPanel* panel = findPanel(render->GetType().toQString());
            if (!panel)
                return;
            {
                const QSignalBlocker comboBlocker(combo);
                combo->setCurrentText(panel->title());
            }
            {
                const QSignalBlocker tabBlocker(tabs);
                tabs->setCurrentWidget(panel);
            }
            panel->onReset();
        } else if (mLayer->IsRasterLayer()) {
            showRasterLayerStyle();
        }
    });
}

void TZControlRender::showRasterLayerStyle()
{
    TERefPtr<TEImageRender> render;
    if (mLayer->GetLayerType() == TELayer::LT_RasterDir) {
        // A raster directory is not a TERasterLayer; only its virtual
        // GetRender() knows its render.
        render = mLayer->GetRender().cast<TEImageRender>();
    } else if (auto* raster = dynamic_cast<TERasterLayer*>(mLayer.get())) {
        render = raster->GetRender().cast<TEImageRender>();
    }
    if (!render) {
        mUi->mComboBoxRenderStyle->setCurrentIndex(0);
        mUi->mTabWidgetStyle->setCurrentWidget(mUi->mTabNoRender);
        return;
    }

    QString target;
    if (mLayer->GetLayerType() == TELayer::LT_RasterDir) {
        target = render.cast<TESingleBandImageRender>() ? QStringLiteral("ImageStretch")
                                                        : QStringLiteral("ImageRGBComposite");
    } else {
        switch (render->getImageRenderMODE()) {
        case 1: target = QStringLiteral("ImageStretch"); break;
        case 2: target = QStringLiteral("ImageColormap"); break;
        case 3: target = QStringLiteral("ImageUnique"); break;
        case 4: target = QStringLiteral("ImageClass"); break;
        case 5: target = QStringLiteral("ImageRGBComposite"); break;
        case 8: target = QStringLiteral("ImageMultiStretch"); break;
        default: break;
        }
    }

    TZRenderPanel* panel = findPanel(target);
    if (!panel)
        return;
    mUi->mComboBoxRenderStyle->setCurrentText(panel->title());
    mUi->mTabWidgetStyle->setCurrentWidget(panel);
    panel->onReset();
}

void TZControlRender::switchToTab(int index)
{
    runGuarded([&] {
        if (index < 0)
            return;
        if (index == 0) {
            mUi->mTabWidgetStyle->setCurrentIndex(0);
            return;
        }
        const uint pageId = mUi->mComboBoxRenderStyle->itemData(index, Qt::UserRole).toUInt();
        for (TZRenderPanel* panel : mRenderPanels) {
            if (panel->winId() == pageId) {
                mUi->mTabWidgetStyle->setCurrentWidget(panel);
                panel->onReset();
            }
        }
    });
}

void TZControlRender::onApply()
{
    runGuarded([&] {
        if (!mLayer)
            return;
        const TERefPtr<TELayer> layer = mLayer;

        bool viewIsActive = false;
        if (TEMapViewManager* views = TEMapViewManager::GetInstance()) {
            TEMapView* view = views->GetMapViewByLayer(layer.get());
            viewIsActive = view && view == views->GetActivedMapView();
        }

        QWidget* page = mUi->mTabWidgetStyle->currentWidget();
        if (!page)
            return;
        if (page != mUi->mTabNoRender) {
            auto* panel = qobject_cast<TZRenderPanel*>(page);
            if (!panel || !panel->onApply())
                return;
            if (viewIsActive)
                emit refreshMap();
            emit symbolChanged(layer->GetGuidStr().toQString());
        } else {
            if (layer->IsFeatureLayer()) {
                if (auto* featureLayer = dynamic_cast<TEFeatureLayer*>(layer.get()))
                    featureLayer->SetSymbolRender(TERefPtr<TEFeatureRender>());
            }
            emit symbolChanged(layer->GetGuidStr().toQString());
            if (viewIsActive)
                emit refreshMap();
        }
    });
}

void TZControlRender::onReset()
{
    runGuarded([&] {
        if (!isVisible())
            return;
        QWidget* page = mUi->mTabWidgetStyle->currentWidget();
        if (!page)
            return;
        if (page != mUi->mTabNoRender) {
            if (auto* panel = qobject_cast<TZRenderPanel*>(page))
                panel->onReset();
        }
        emit refreshMap();
    });
}

void TZControlRender::onLayerWillBeRemove(const QString& lyrGUID)
{
    if (!mLayer || lyrGUID != mLayer->GetGuidStr().toQString())
        return;
    mLayer = nullptr;
    hide();
}
