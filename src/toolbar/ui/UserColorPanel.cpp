// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbar/ui/UserColorPanel.h"

#include <QColorDialog>
#include <QEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

namespace toolbar {

UserColorPanel::UserColorPanel(QObject* parent)
    : QObject(parent)
{}

UserColorPanel::~UserColorPanel()
{
    close();
}

void UserColorPanel::make()
{
    // Frameless and override-redirect like the overlay, so that it can stand
    // above it: no window manager would put a managed window there.
    m_window =
        std::make_unique<QWidget>(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                                               Qt::X11BypassWindowManagerHint | Qt::Tool);
    m_window->setObjectName(QStringLiteral("userColorPanel"));
    m_window->setWindowTitle(QStringLiteral("Kelvo colour"));
    auto* layout = new QVBoxLayout(m_window.get());
    layout->setContentsMargins(6, 6, 6, 6);
    m_dialog = new QColorDialog(m_window.get());
    // Embedded in the panel: a dialog window of its own would be managed,
    // and hide under the overlay.
    m_dialog->setWindowFlags(Qt::Widget);
    m_dialog->setOptions(QColorDialog::ShowAlphaChannel | QColorDialog::DontUseNativeDialog);
    layout->addWidget(m_dialog);
    connect(m_dialog, &QColorDialog::currentColorChanged, this, &UserColorPanel::colorChanged);
    // OK, Cancel and Escape all close it; every change has been told already.
    connect(m_dialog, &QDialog::finished, this, [this] { close(); });
    m_window->installEventFilter(this);
}

void UserColorPanel::open(QWidget* overlay, const QRect& anchor, const QColor& initial)
{
    if (overlay == nullptr)
        return;
    if (!m_window)
        make();
    m_overlay = overlay;
    {
        // Setting the start colour is not a change of the user's.
        const QSignalBlocker quiet(m_dialog);
        m_dialog->setCurrentColor(initial.isValid() ? initial : QColor(Qt::white));
    }
    m_dialog->show();
    m_window->adjustSize();
    // Right of the anchor, kept on the overlay's screen.
    const QRect screen = overlay->geometry();
    QRect frame(QPoint(anchor.right() + 12, anchor.top()), m_window->size());
    if (frame.right() > screen.right())
        frame.moveRight(anchor.left() - 12);
    frame.moveLeft(std::max(frame.left(), screen.left()));
    frame.moveBottom(std::min(frame.bottom(), screen.bottom()));
    frame.moveTop(std::max(frame.top(), screen.top()));
    m_window->move(frame.topLeft());
    m_window->show();
    m_window->raise();
}

bool UserColorPanel::isOpen() const
{
    return m_window && m_window->isVisible();
}

void UserColorPanel::close()
{
    if (!m_window || !m_window->isVisible())
        return;
    giveKeyboardBack();
    m_window->hide();
}

void UserColorPanel::giveKeyboardBack()
{
    if (!m_hasKeyboard)
        return;
    m_hasKeyboard = false;
    if (QWindow* own = m_window->windowHandle())
        own->setKeyboardGrabEnabled(false);
    // Only an overlay still up wants it; after the capture's end nobody does.
    if (m_overlay != nullptr && m_overlay->isVisible() && m_overlay->windowHandle() != nullptr)
        m_overlay->windowHandle()->setKeyboardGrabEnabled(true);
}

bool UserColorPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_window.get()) {
        // The keyboard follows the pointer, as it does between overlays.
        if (event->type() == QEvent::Enter && !m_hasKeyboard && m_window->windowHandle()) {
            m_hasKeyboard = m_window->windowHandle()->setKeyboardGrabEnabled(true);
            m_window->activateWindow();
        } else if (event->type() == QEvent::Leave) {
            giveKeyboardBack();
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace toolbar
