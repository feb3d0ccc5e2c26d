#ifndef KGALLERYCOMBOBOX_H
#define KGALLERYCOMBOBOX_H

#include <QLineEdit>
#include <QPointer>
#include <QWidget>

#include <kcommand.h>
#include <kgalleryview.h>

#include <QCompleter>
class KPopupWidget;

/// The edit field of a gallery combo box: the first press after it got the focus selects all.
class NORVIKOFFICEUI_EXPORT KGalleryComboBoxLineEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit KGalleryComboBoxLineEdit(QWidget* parent = nullptr);
    ~KGalleryComboBoxLineEdit() override;

    bool selectOnNextPress() const { return m_selectOnNextPress; }

public Q_SLOTS:
    /// Sets only a different text, and returns the cursor to the start.
    void setText(const QString& text);

protected:
    void focusInEvent(QFocusEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;

private:
    bool m_selectOnNextPress = false;
};

/// A field that shows one element of the gallery (drawn by the element) instead of a text.
class NORVIKOFFICEUI_EXPORT KGalleryComboBoxLineWidget : public QWidget
{
    Q_OBJECT
public:
    explicit KGalleryComboBoxLineWidget(QWidget* parent = nullptr);
    ~KGalleryComboBoxLineWidget() override;

    KGalleryModelAbstractItem* getItem() const { return m_item.data(); }

public Q_SLOTS:
    void on_item_changed(KGalleryModelAbstractItem* item);

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    QPointer<KGalleryModelAbstractItem> m_item;
};

/**
 * A combo box whose list is a gallery, opened in a KPopupWidget. The field is an edit
 * (setEditable()) with a completer over the elements' texts, or a line widget that shows the
 * current element, or nothing but the current text.
 *
 * The box owns its model and its view. A click in the list, a completion or a typed text
 * confirmed with Return chooses; the box then emits indexClicked() in its three forms and
 * currentTextChanged(). Title elements (and any element with the property
 * KGALLERY_COMBOX_COMPLETE set) stay out of the completer.
 */
class NORVIKOFFICEUI_EXPORT KGalleryComboBox : public QWidget
{
    Q_OBJECT
public:
    /// The name of the element property that keeps an element out of the completer.
    static const char* const KGALLERY_COMBOX_COMPLETE;

    explicit KGalleryComboBox(QWidget* parent = nullptr,
                              KGalleryViewBase::GalleryViewType type = KGalleryViewBase::ScrollView);
    ~KGalleryComboBox() override;

    KGalleryAbstractModel* model() const { return m_model.data(); }
    /// Takes model (owned from now on) and a new view of the type; the old ones are deleted.
    void setModel(KGalleryAbstractModel* model, KGalleryViewBase::GalleryViewType type = KGalleryViewBase::ScrollView);
    KGalleryViewBase* view() const { return m_view.data(); }
    /// Takes view (owned) as the list; its model becomes the box's model.
    void setGalleryView(KGalleryViewBase* view);
    KPopupWidget* popupWidget() const { return m_popup; }

    bool isEditable() const;
    /// An edit field (true) or none (false).
    void setEditable(bool editable);
    KGalleryComboBoxLineEdit* lineEdit() const;
    /// Shows the current element in widget (owned) instead of an edit field.
    void setLineWidget(KGalleryComboBoxLineWidget* widget);
    QWidget* lineWidget() const { return m_lineWidget.data(); }

    QString currentText() const { return m_currentText; }
    int currentIndex() const;
    /// The index of the first element with that text (case aside); -1 if none.
    int findText(const QString& text) const;
    QCompleter* completer() const { return m_completer.data(); }
    void setCompleter(QCompleter* completer);

    /// The width of the box; -1 (at first) for its size hint.
    int fixedWidth2() const { return m_fixedWidth; }
    void setFixedWidth2(int width);

    /// Binds the box to command: it takes the command's enabled and visible state.
    void setDefaultCommand(KCommand* command);
    KCommand* defaultCommand() const { return m_command.data(); }

    /// The rectangle of the field (from the style's combo box geometry).
    QRect editFieldRect() const;
    QRect arrowRect() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void indexClicked(int index);
    void indexClicked(const QString& text);
    void indexClicked(KGalleryModelAbstractItem* item);
    void completerChanged(QCompleter* completer);
    void currentTextChanged(const QString& text);

public Q_SLOTS:
    void popup();
    void setCurrentText(const QString& text, bool emitSignal);
    void setCurrentText(const QString& text);
    void setCurrentIndex(int index, bool emitSignal);
    void setCurrentIndex(int index);
    void on_modelItem_clicked(int idx);
    void on_completerChanged();
    void on_completerActivated(const QString& text);
    void on_lineWidget_return();
    void popupHide();
    void syncCommand();

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

    void initStyleOption(class QStyleOptionComboBox* option) const;

private:
    void _onCurrentTextChanged(const QString& text);
    void _placeLineWidget();
    void _setLineWidget(QWidget* widget);

    QPointer<QWidget> m_lineWidget;
    QPointer<KGalleryAbstractModel> m_model;
    QPointer<KGalleryViewBase> m_view;
    KPopupWidget* m_popup;
    QPointer<QCompleter> m_completer;
    QString m_currentText;
    int m_fixedWidth = -1;
    bool m_hoverControl = false;
    QPointer<KCommand> m_command;
};

#endif // KGALLERYCOMBOBOX_H
