// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/WindowPicture.h"

#include <utility>

namespace capture {

WindowImage::WindowImage(core::Picture picture)
    : m(std::make_shared<Shared>(Shared{nullptr, std::move(picture)}))
{}

WindowImage::WindowImage(std::shared_ptr<platform::HeldPicture> held, QSizeF pointSize)
    : m(std::make_shared<Shared>(Shared{std::move(held), core::Picture{QImage(), pointSize}}))
{}

const core::Picture& WindowImage::picture() const
{
    static const core::Picture none;
    if (!m)
        return none;
    if (m->held) {
        m->picture.pixels = m->held->read();
        m->held.reset();
    }
    return m->picture;
}

QSizeF WindowImage::pointSize() const
{
    return m ? m->picture.pointSize : QSizeF();
}

bool WindowImage::isNull() const
{
    if (!m)
        return true;
    return m->held ? m->held->isNull() : m->picture.isNull();
}

bool WindowImage::isRead() const
{
    return !m || !m->held;
}

} // namespace capture
