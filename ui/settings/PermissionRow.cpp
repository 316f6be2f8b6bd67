#include "ui/settings/PermissionRow.h"

#include "ui/kit/PushButton.h"
#include "ui/kit/SymbolView.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemedLabel.h"

#include <QHBoxLayout>

namespace tessary {
namespace {

constexpr int kGrantedSymbol = 20;
constexpr int kMissingSymbol = 16;
constexpr int kGap = 4;
const ThemedLabel::Look kWord{Theme::kBodySize, QFont::Normal, &ThemeColours::warning, 20};

} // namespace

PermissionRow::PermissionRow(const Theme& theme, const QString& symbol, const QString& name,
                             const QString& purpose, QWidget* parent)
    : SettingsRow(theme, symbol, name, parent),
      m_granted(
          new SymbolView(theme, QStringLiteral("checkmark.circle"), kGrantedSymbol, &ThemeColours::success)),
      m_missing(new SymbolView(theme, QStringLiteral("exclamationmark.circle"), kMissingSymbol,
                               &ThemeColours::warning)),
      m_word(new ThemedLabel(theme, kWord, tr("未授权"))),
      m_request(new PushButton(theme, PushButton::Role::Ordinary))
{
    setNote(purpose);
    m_granted->setAccessibleName(tr("已授权"));
    m_granted->setToolTip(tr("已授权"));
    m_request->setText(tr("申请权限"));
    m_request->setAccessibleName(m_request->text());
    m_request->setAccessibleDescription(name);
    auto* state = new QWidget;
    m_stateLine = new QHBoxLayout(state);
    m_stateLine->setSpacing(kGap);
    m_stateLine->addWidget(m_granted);
    m_stateLine->addWidget(m_missing);
    m_stateLine->addWidget(m_word);
    addControl(*state);
    addControl(*m_request);
    connect(m_request, &QAbstractButton::clicked, this, &PermissionRow::requested);
    setGranted(false);
}

void PermissionRow::setGranted(bool isGranted)
{
    m_isGranted = isGranted;
    m_granted->setVisible(isGranted);
    m_stateLine->setContentsMargins(0, 0, isGranted ? static_cast<int>(Bleed::Ring) : 0, 0);
    for (QWidget* part :
         {static_cast<QWidget*>(m_missing), static_cast<QWidget*>(m_word), static_cast<QWidget*>(m_request)})
        part->setVisible(!isGranted);
    setAccessibleName(label() + QStringLiteral(" ") + (isGranted ? tr("已授权") : tr("未授权")));
}

} // namespace tessary
