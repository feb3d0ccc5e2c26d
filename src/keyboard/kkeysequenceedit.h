#ifndef KKEYSEQUENCEEDIT_H
#define KKEYSEQUENCEEDIT_H

#include <QKeySequence>
#include <QTextLayout>
#include <QWidget>

#include <norvikofficeui_export.h>

/**
 * The field in which the user presses a key combination. While it has the focus it takes
 * every key before the accelerators do, shows what is held, and keeps one key with its
 * modifiers. A bare key is taken with Alt (a shortcut needs a modifier); Escape leaves the
 * field with the stored key unchanged. The default text shows while no key is stored.
 */
class NORVIKOFFICEUI_EXPORT KKeySequenceEdit : public QWidget
{
    Q_OBJECT
public:
    explicit KKeySequenceEdit(QWidget* parent = nullptr);
    ~KKeySequenceEdit() override;

    void setDefaultText(const QString& text);
    QString defaultText() const { return m_defaultText; }
    /// The text shown (not the stored key).
    void setText(const QString& text);
    QString text() const { return m_text; }
    bool isValid() const { return m_key != 0; }
    int key() const { return m_key; }
    Qt::KeyboardModifiers modifiers() const { return m_modifiers; }
    /// The stored key with its modifiers; empty when none is stored.
    QKeySequence keySequence() const;
    /// The store form of the stored key (KKeySequenceHelper::keyAndModifiersToString).
    QString toString() const;
    /// Stores the key of a store-form text and shows it.
    void setString(const QString& text);
    void setFollowBorderColor(bool follow);
    bool isCursorVisible() const { return m_cursorVisible; }
    QSize contentSizeHint() const;
    QSize sizeHint() const override;

Q_SIGNALS:
    void keyChanged();
    void mousePressed();
    void enterPressed();

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void keyReleaseEvent(QKeyEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;
    void timerEvent(QTimerEvent* e) override;
    void paintEvent(QPaintEvent* e) override;

private:
    QString _storedText() const;

    int m_key = 0;
    Qt::KeyboardModifiers m_modifiers;
    QString m_text;
    QString m_defaultText;
    QTextLayout m_layout;
    int m_cursorTimer = 0;
    bool m_cursorVisible = false;
    bool m_followBorderColor = true;
    bool m_filtering = false;
};

#endif // KKEYSEQUENCEEDIT_H
