#include "kcommandbarprop.h"

#include <QVariant>

#include "kcommand.h"
#include "kmainwindow.h"

KCommandBarProp::KCommandBarProp(KCommand* cmd, KMainWindow* window)
    : m_command(cmd)
{
    if (window) {
        connect(this, &KCommandBarProp::posChanged, window, &KMainWindow::updateCommandBarArea);
        connect(this, &KCommandBarProp::rectChanged, window, &KMainWindow::updateCommandBarRect);
        connect(this, &KCommandBarProp::rowIndexChanged, window, &KMainWindow::updateCommandBarRowIndex);
        connect(this, &KCommandBarProp::protectionChanged, window, &KMainWindow::updateCommandBarProtection);
    }
}

int KCommandBarProp::_int(const char* name, int defaultValue) const
{
    if (!m_command)
        return defaultValue;
    bool ok = false;
    const int value = m_command->property(name).toInt(&ok);
    return ok ? value : defaultValue;
}

bool KCommandBarProp::_bool(const char* name, bool defaultValue) const
{
    if (!m_command)
        return defaultValue;
    const QVariant v = m_command->property(name);
    return v.canConvert<bool>() ? v.toBool() : defaultValue;
}

QString KCommandBarProp::_string(const char* name) const
{
    return m_command ? m_command->property(name).toString() : QString();
}

void KCommandBarProp::_setAndNotify(const char* name, int value, void (KCommandBarProp::*notify)(KCommand*))
{
    if (!m_command)
        return;
    // Signalled whether or not the value changed: the window places the bar again either way.
    m_command->setProperty(name, value);
    Q_EMIT (this->*notify)(m_command);
}

void KCommandBarProp::setType(int type)
{
    if (m_command)
        m_command->setProperty("bartype", type);
}

int KCommandBarProp::getType() const
{
    return _int("bartype", PopupMenuType);
}

void KCommandBarProp::setTemp(bool temp)
{
    if (m_command)
        m_command->setProperty("temp", temp);
}

bool KCommandBarProp::getTemp() const
{
    return _bool("temp", false);
}

void KCommandBarProp::setContext(const QString& context)
{
    if (m_command)
        m_command->setProperty("context", context);
}

QString KCommandBarProp::getContext() const
{
    return _string("context");
}

void KCommandBarProp::setName(const QString& name)
{
    if (m_command)
        m_command->setProperty("name", name);
}

QString KCommandBarProp::getName() const
{
    const QString name = _string("name");
    return name.isNull() ? _string("id") : name;
}

void KCommandBarProp::setRowIndex(int row)
{
    _setAndNotify("rowindex", row, &KCommandBarProp::rowIndexChanged);
}

int KCommandBarProp::getRowIndex() const
{
    return _int("rowindex", 0);
}

void KCommandBarProp::setPosition(int position)
{
    _setAndNotify("position", position, &KCommandBarProp::posChanged);
}

int KCommandBarProp::getPosition() const
{
    return _int("position", PosTop);
}

void KCommandBarProp::setProtection(int protection)
{
    _setAndNotify("protection", protection, &KCommandBarProp::protectionChanged);
}

int KCommandBarProp::getProtection() const
{
    return _int("protection", 0);
}

void KCommandBarProp::setLeft(int left)
{
    _setAndNotify("left", left, &KCommandBarProp::rectChanged);
}

int KCommandBarProp::getLeft() const
{
    return _int("left", 0);
}

void KCommandBarProp::setTop(int top)
{
    _setAndNotify("top", top, &KCommandBarProp::rectChanged);
}

int KCommandBarProp::getTop() const
{
    return _int("top", 0);
}

void KCommandBarProp::setWidth(int width)
{
    _setAndNotify("width", width, &KCommandBarProp::rectChanged);
}

int KCommandBarProp::getWidth() const
{
    return _int("width", 32);
}

void KCommandBarProp::setHeight(int height)
{
    _setAndNotify("height", height, &KCommandBarProp::rectChanged);
}

int KCommandBarProp::getHeight() const
{
    return _int("height", 32);
}

bool KCommandBarProp::getCustom() const
{
    return _bool("custom", false);
}

void KCommandBarProp::setVisible(bool visible)
{
    if (m_command)
        m_command->setVisible(visible);
}

bool KCommandBarProp::getVisible() const
{
    return m_command && m_command->isVisible();
}

void KCommandBarProp::setEnable(bool enable)
{
    if (m_command)
        m_command->setEnabled(enable);
}

bool KCommandBarProp::getEnbale() const
{
    return m_command && m_command->isEnabled();
}

void KCommandBarProp::setNameLocal(const QString& text)
{
    if (!m_command)
        return;
    // A bar whose description gave it a caption keeps that display name.
    if (m_command->property("caption").canConvert<QString>())
        return;
    m_command->setText(text);
}

QString KCommandBarProp::getNameLocal() const
{
    return m_command ? m_command->text() : QString();
}

QString KCommandBarProp::getCmdID() const
{
    return _string("id");
}
