// Shared by the keyboard tests: a main window with a ribbon of known tabs and buttons, made
// without a description, and a way to act inside a key-tip level while it blocks.
#ifndef KEYTIPTESTHELPERS_H
#define KEYTIPTESTHELPERS_H

#include <QtTest/QtTest>

#include <functional>
#include <kapplication.h>
#include <khotkeyassistant.h>
#include <klistcommand.h>
#include <kmainwindow.h>
#include <krblogicgroupcommand.h>
#include <krbtabwidget.h>
#include <krbtabwidgetcommand.h>
#include <ktriggercommand.h>

namespace KeyTipTest {

/// A trigger command that counts its firings.
class CountingCommand : public KTriggerCommand
{
public:
    CountingCommand(const QString& text, QObject* owner)
        : KTriggerCommand(owner, owner)
    {
        setText(text);
        connect(this, &KCommand::triggered, this, [this] { ++fired; });
    }
    int fired = 0;
};

/**
 * A ribbon: tabs "Home" (key H) and "Insert" (key N), a file button (key F) whose menu has
 * "New" (N) and "Open" (O). Home has groups of buttons; a button's text is "b<i>", and the
 * ones named in keyed get their text's capital as "rbHotKey", the others are numbered.
 */
struct Ribbon
{
    QObject owner;
    KRbTabWidgetCommand* tabs = nullptr;
    QList<CountingCommand*> buttons;
    QList<CountingCommand*> fileItems;

    Ribbon(int groups, int perGroup)
    {
        tabs = new KRbTabWidgetCommand(&owner, &owner);
        auto* file = new KListCommand(&owner, &owner);
        file->setText(QStringLiteral("File"));
        file->setProperty("rbHotKey", QStringLiteral("F"));
        for (const char* name : {"New", "Open"}) {
            auto* item = new CountingCommand(QLatin1String(name), &owner);
            item->setProperty("hotKey", QString(QLatin1Char(name[0])));
            file->addSubCommand(item);
            fileItems.append(item);
        }
        tabs->setFileCommand(file);
        auto* home = new KListCommand(&owner, &owner);
        home->setText(QStringLiteral("Home"));
        home->setProperty("rbHotKey", QStringLiteral("H"));
        for (int g = 0; g < groups; ++g) {
            auto* group = new KRbLogicGroupCommand(&owner, &owner);
            group->setText(QStringLiteral("Group %1").arg(g));
            for (int i = 0; i < perGroup; ++i) {
                auto* button = new CountingCommand(QStringLiteral("b%1").arg(buttons.size()), &owner);
                button->setProperty("spaceHint", 2);
                group->addSubCommand(button);
                buttons.append(button);
            }
            home->addSubCommand(group);
        }
        auto* insert = new KListCommand(&owner, &owner);
        insert->setText(QStringLiteral("Insert"));
        insert->setProperty("rbHotKey", QStringLiteral("N"));
        tabs->addSubCommand(home);
        tabs->addSubCommand(insert);
    }
};

/// Shows window as the application's current main window, active.
inline bool showCurrent(KMainWindow& window)
{
    window.resize(1200, 400);
    window.show();
    KApplication::instance()->bringFrontMainWindow(&window);
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

/// Alt pressed and released over window, as the user taps it.
inline void tapAlt(QWidget* window)
{
    QTest::keyPress(window, Qt::Key_Alt);
    QTest::keyRelease(window, Qt::Key_Alt);
}

/// The innermost visible level; null when none shows.
inline KHotKeyAssistant* topLevel()
{
    const QList<KHotKeyAssistant*> all = KHotKeyAssistant::assistants();
    return all.isEmpty() ? nullptr : all.last();
}

/// The keys of a level's labels, in order.
inline QStringList keys(const KHotKeyAssistant* level)
{
    QStringList result;
    if (level) {
        for (const hotkey_message& m : level->messages())
            result.append(m.key);
    }
    return result;
}

/**
 * Runs steps one after the other from the event loop, each once the previous has run: the
 * way to act inside the nested loops of the key tips. Each step sees the level that shows.
 */
class Script : public QObject
{
public:
    explicit Script(QList<std::function<void()>> steps)
        : m_steps(std::move(steps))
    {
        QTimer::singleShot(0, this, [this] { next(); });
    }
    bool finished() const { return m_index >= m_steps.size(); }

private:
    void next()
    {
        if (finished())
            return;
        auto step = m_steps.at(m_index++);
        // The next step is queued first: a step may block in a further level's loop.
        QTimer::singleShot(20, this, [this] { next(); });
        step();
    }
    QList<std::function<void()>> m_steps;
    int m_index = 0;
};

} // namespace KeyTipTest

#endif // KEYTIPTESTHELPERS_H
