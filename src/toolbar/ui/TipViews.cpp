// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/TipViews.h"

#include "core/Geometry.h"
#include "core/Localized.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/ToolRegistry.h"

#include <QActionGroup>
#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

namespace toolbar {

namespace {

// What the tip of a button without a short-cut menu gives as its key.
QString fixedShortcut(int slot, const QVariantMap& shortcutOfButton)
{
    const Slot& s = slots()[static_cast<std::size_t>(slot)];
    if (s.tool == ToolId::Undo)
        return QStringLiteral("Ctrl+Z");
    if (s.tool == ToolId::Cancel)
        return QStringLiteral("Esc");
    const QLatin1StringView key = tool(*s.tool).shortcutKey;
    return key.isEmpty() ? QString() : shortcutOfButton.value(QString(key)).toString();
}

// The tips' common look: a white box with dark words and the arrow cursor.
void lookLikeATip(QFrame& tip)
{
    tip.setCursor(Qt::ArrowCursor);
    tip.setAutoFillBackground(true);
    tip.setFrameShape(QFrame::Box);
    QPalette palette = tip.palette();
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, QColor(40, 40, 40));
    tip.setPalette(palette);
}

} // namespace

TipBoxView::TipBoxView(int slot, QWidget* parent)
    : QFrame(parent)
    , m_slot(slot)
{
    const Slot& s = slots()[static_cast<std::size_t>(slot)];
    setObjectName(QString(s.tipBox));
    lookLikeATip(*this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 6, 10, 6);
    layout->setSpacing(4);
    m_title = new QLabel(core::localized(tool(*s.tool).tip), this);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    layout->addWidget(m_title);

    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(new QLabel(core::localized("Shortcut"), this));
    if (!s.menuButton.isEmpty()) {
        m_menuButton = new QToolButton(this);
        m_menuButton->setObjectName(QString(s.menuButton));
        m_menuButton->setPopupMode(QToolButton::InstantPopup);
        m_menuButton->setFocusPolicy(Qt::NoFocus);
        auto* menu = new QMenu(m_menuButton);
        m_menuButton->setMenu(menu);
        connect(menu, &QMenu::aboutToHide, this, &TipBoxView::menuClosed);
        row->addWidget(m_menuButton);
    } else {
        m_shortcut = new QLabel(this);
        row->addWidget(m_shortcut);
    }
    row->addStretch();
    layout->addLayout(row);

    m_opacity = new QGraphicsOpacityEffect(this);
    m_opacity->setOpacity(1.0);
    setGraphicsEffect(m_opacity);
}

void TipBoxView::refresh(const QVariantMap& shortcutOfButton)
{
    if (m_shortcut != nullptr)
        m_shortcut->setText(fixedShortcut(m_slot, shortcutOfButton));
    if (m_menuButton != nullptr) {
        const QString key(shortcutKeyOf(m_slot));
        m_menuButton->setText(shortcutOfButton.value(key).toString());
        QMenu* menu = m_menuButton->menu();
        menu->clear();
        // A key another button holds cannot be chosen.
        for (const MenuItem& item : shortcutMenu(m_slot, shortcutOfButton)) {
            QAction* action = menu->addAction(item.title);
            action->setCheckable(true);
            action->setChecked(item.current);
            action->setEnabled(item.enabled);
            connect(action, &QAction::triggered, this,
                    [this, key, text = item.title] { Q_EMIT shortcutChosen(key, text); });
        }
    }
    adjustSize();
}

void TipBoxView::setAlpha(double alpha)
{
    m_opacity->setOpacity(alpha);
}

ColorTipView::ColorTipView(QWidget* parent)
    : QFrame(parent)
{
    setObjectName(QStringLiteral("boxColorTips"));
    lookLikeATip(*this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 6, 10, 6);
    layout->addWidget(new QLabel(
        core::localized("Right-click the last swatch\nto choose your own colour."), this));
    m_opacity = new QGraphicsOpacityEffect(this);
    m_opacity->setOpacity(1.0);
    setGraphicsEffect(m_opacity);
    adjustSize();
}

void ColorTipView::setAlpha(double alpha)
{
    m_opacity->setOpacity(alpha);
}

ButtonTipView::ButtonTipView(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("buttonTip"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_TranslucentBackground);
    hide();
}

void ButtonTipView::setText(const QString& text)
{
    m_text = text;
    QFont font = this->font();
    font.setPixelSize(12);
    setFont(font);
    const QSize size = fontMetrics().size(0, text.isEmpty() ? QStringLiteral(" ") : text);
    setFixedSize(size.width() + 25, size.height() + 20);
    place();
    update();
}

void ButtonTipView::place()
{
    if (parentWidget() == nullptr)
        return;
    // 10 points in from the overlay's lower-left corner.
    const QRectF frame(QPointF(10, 10), QSizeF(size()));
    move(core::flipped(frame, parentWidget()->height()).topLeft().toPoint());
}

void ButtonTipView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::black);
    p.drawRoundedRect(QRectF(rect()), 5, 5);
    p.setPen(Qt::white);
    p.drawText(QRectF(rect()).adjusted(10, 10, -15, -10), Qt::AlignLeft | Qt::AlignTop, m_text);
}

} // namespace toolbar
