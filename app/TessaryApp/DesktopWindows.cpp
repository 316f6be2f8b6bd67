#include "app/TessaryApp/DesktopWindows.h"

#include "app/AppRuntime.h"
#include "platform/DesktopAppearance.h"
#include "platform/WindowEffects.h"
#include "recognition/LocalOCRResultWindowController.h"
#include "store/FileImageCache.h"
#include "ui/OrdinaryWindows.h"
#include "ui/kit/FramedWindow.h"
#include "ui/kit/TextScale.h"
#include "ui/preview/PreviewDetailView.h"
#include "ui/preview/PreviewSurroundings.h"
#include "ui/preview/PreviewWindow.h"
#include "ui/preview/PreviewWindowController.h"
#include "ui/quicksearch/KeyableSearchPanel.h"
#include "ui/quicksearch/QuickSearchPanelController.h"
#include "ui/settings/SettingsWindowController.h"

#include <QGuiApplication>
#include <QScreen>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace tessary {
namespace {

/// Without what somebody asked of Qt on top of it.
double screenScale()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    bool isGiven = false;
    const double given = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble(&isGiven);
    return screen == nullptr ? 1 : screen->devicePixelRatio() / (isGiven && given > 0 ? given : 1);
}

} // namespace

DesktopWindows::DesktopWindows(const DesktopAppearance& appearance, WindowEffects& effects, Clock& clock,
                               const ApplicationSources& applications)
    : m_appearance(appearance),
      m_effects(effects),
      m_applications(applications),
      m_regionSelection(m_theme, effects, clock)
{
    connect(&appearance, &DesktopAppearance::changed, this, &DesktopWindows::followAppearance);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &DesktopWindows::followScreen);
    followScreen(QGuiApplication::primaryScreen());
}

DesktopWindows::~DesktopWindows() = default;

/// Its resolution may have the person's text size in it.
void DesktopWindows::followScreen(QScreen* screen)
{
    if (screen != nullptr)
        connect(screen, &QScreen::logicalDotsPerInchChanged, this, &DesktopWindows::followAppearance,
                Qt::UniqueConnection);
    followAppearance();
}

void DesktopWindows::followAppearance()
{
    m_theme.setDark(m_appearance.colourScheme() == DesktopAppearance::ColourScheme::Dark);
    m_theme.setAccent(m_appearance.accentColour());
    m_theme.setReducedMotion(m_appearance.reducedMotion());
    m_theme.setTextScale(remainingTextScale(m_appearance.textScale(), screenScale()));
    QToolTip::setPalette(m_theme.palette());
    QToolTip::setFont(m_theme.font(Theme::kCaptionSize));
}

void DesktopWindows::attach(AppRuntime& runtime)
{
    m_runtime = &runtime;
    m_localOCRController = std::make_unique<LocalOCRResultWindowController>(m_theme, m_effects);
    m_ordinaryWindows = std::make_unique<OrdinaryWindows>(runtime.settings(), m_effects);
    const auto loadPart = [&runtime](QString path, QRect part, QSize size) {
        return runtime.picturePart(std::move(path), part, size);
    };
    m_previewSurroundings =
        std::make_unique<PreviewSurroundings>(m_theme, FileImageCache::sharedImage, loadPart);
    m_quickSearch = std::make_unique<QuickSearchPanelController>(runtime, m_theme, m_effects);
    connect(m_quickSearch.get(), &QuickSearchPanelController::becameKey, &runtime,
            &AppRuntime::panelBecameKey);
    connect(m_quickSearch.get(), &QuickSearchPanelController::gaveUpKeyboard, &runtime,
            &AppRuntime::panelGaveUpKeyboard);
}

void DesktopWindows::detach()
{
    m_regionSelection.cancel();
    m_localOCRController.reset();
    m_quickSearch.reset();
    m_previewControllers.clear();
    m_previewSurroundings.reset();
    m_settings.reset();
    m_ordinaryWindows.reset();
    m_runtime = nullptr;
}

bool DesktopWindows::isQuickSearchVisible() const
{
    return m_quickSearch && m_quickSearch->isVisible();
}

void DesktopWindows::showQuickSearch()
{
    if (m_quickSearch)
        m_quickSearch->show();
}

void DesktopWindows::hideQuickSearch()
{
    if (m_quickSearch)
        m_quickSearch->hide();
}

void DesktopWindows::showSettings()
{
    if (m_runtime == nullptr)
        return;
    if (!m_settings) {
        m_settings =
            std::make_unique<SettingsWindowController>(m_theme, *m_runtime, m_effects, m_applications);
        m_ordinaryWindows->add(m_settings->window());
    }
    m_settings->show();
}

void DesktopWindows::showPreview(const ScreenshotRecord& record)
{
    if (m_runtime == nullptr)
        return;
    const auto found =
        std::find_if(m_previewControllers.cbegin(), m_previewControllers.cend(),
                     [&record](const auto& controller) { return controller->item() == record.id; });
    PreviewWindowController& controller = found != m_previewControllers.cend() ? **found : addPreview(record);
    controller.present();
    m_effects.activate(controller.window().winId());
}

PreviewWindowController& DesktopWindows::addPreview(const ScreenshotRecord& record)
{
    auto& controller = *m_previewControllers.emplace_back(
        std::make_unique<PreviewWindowController>(record, *m_runtime, *m_previewSurroundings));
    m_ordinaryWindows->add(controller.window());
    connect(&controller, &PreviewWindowController::windowWillClose, this,
            [this, forgotten = &controller] { forgetPreview(forgotten); });
    return controller;
}

/// It is in the middle of closing, so it goes later.
void DesktopWindows::forgetPreview(PreviewWindowController* controller)
{
    const auto found = std::find_if(m_previewControllers.begin(), m_previewControllers.end(),
                                    [controller](const auto& each) { return each.get() == controller; });
    if (found == m_previewControllers.end())
        return;
    found->release()->deleteLater();
    m_previewControllers.erase(found);
    if (m_previewControllers.empty())
        m_previewSurroundings->tiles.clear(); // which are of no use to any other window
}

void DesktopWindows::saveEdits()
{
    for (const auto& controller : m_previewControllers)
        controller->view().saveAtEnd();
}

void DesktopWindows::showRecognitionResult(const RecognitionResult& result)
{
    if (m_localOCRController)
        m_localOCRController->show(result);
}

// --- while the screen is looked at ------------------------------------------

/// The panel would hide anyway when it loses the keyboard, unless it is pinned.
bool DesktopWindows::withdraw()
{
    if (m_runtime == nullptr)
        return false;
    bool had = isQuickSearchVisible();
    if (had && m_runtime->settings().quickSearchPinned())
        m_withdrawn.withdraw(m_quickSearch->panel());
    else
        hideQuickSearch();
    if (FramedWindow* const result = m_localOCRController->window())
        had = m_withdrawn.withdraw(*result) || had;
    if (m_settings)
        had = m_withdrawn.withdraw(m_settings->window()) || had;
    for (const auto& controller : m_previewControllers)
        had = m_withdrawn.withdraw(controller->window()) || had;
    return had;
}

void DesktopWindows::restore()
{
    m_withdrawn.restore();
}

} // namespace tessary
