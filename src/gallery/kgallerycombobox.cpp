#include "kgallerycombobox.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QLayout>
#include <QPainter>
#include <QStyleOptionComboBox>
#include <QToolTip>

#include <kapplication.h>
#include <kcommand.h>
#include <kcommandwidgetbridge.h>
#include <kevent.h>
#include <kpopupwidget.h>
#include <kscrollgalleryview.h>

const char* const KGalleryComboBox::KGALLERY_COMBOX_COMPLETE = "KGALLERY_COMBOX_COMPLETE";

// --- KGalleryComboBoxLineEdit ---

KGalleryComboBoxLineEdit::KGalleryComboBoxLineEdit(QWidget* parent)
    : QLineEdit(parent)
{
    setFrame(false);
}

KGalleryComboBoxLineEdit::~KGalleryComboBoxLineEdit() = default;

void KGalleryComboBoxLineEdit::setText(const QString& text)
{
    if (text == this->text())
        return;
    QLineEdit::setText(text);
    setCursorPosition(0);
}

void KGalleryComboBoxLineEdit::focusInEvent(QFocusEvent* e)
{
    QLineEdit::focusInEvent(e);
    m_selectOnNextPress = true;
    if (parentWidget())
        parentWidget()->update();
}

void KGalleryComboBoxLineEdit::focusOutEvent(QFocusEvent* e)
{
    QLineEdit::focusOutEvent(e);
    m_selectOnNextPress = false;
    deselect();
    setModified(false);
    setCursorPosition(0);
    if (parentWidget())
        parentWidget()->update();
}

void KGalleryComboBoxLineEdit::mousePressEvent(QMouseEvent* e)
{
    QLineEdit::mousePressEvent(e);
    if (m_selectOnNextPress) {
        m_selectOnNextPress = false;
        selectAll();
    }
}

// --- KGalleryComboBoxLineWidget ---

KGalleryComboBoxLineWidget::KGalleryComboBoxLineWidget(QWidget* parent)
    : QWidget(parent)
{
}

KGalleryComboBoxLineWidget::~KGalleryComboBoxLineWidget() = default;

void KGalleryComboBoxLineWidget::on_item_changed(KGalleryModelAbstractItem* item)
{
    if (item == m_item)
        return;
    m_item = item;
    update();
}

void KGalleryComboBoxLineWidget::paintEvent(QPaintEvent*)
{
    KGalleryModelAbstractItem* item = m_item.data();
    if (!item)
        return;
    QPainter painter(this);
    item->drawItem(painter, rect(), KGalleryViewCompact);
}

// --- KGalleryComboBox ---

KGalleryComboBox::KGalleryComboBox(QWidget* parent, KGalleryViewBase::GalleryViewType type)
    : QWidget(parent)
    , m_popup(new KPopupWidget(this, Qt::Popup))
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(this, &KGalleryComboBox::currentTextChanged, this, &KGalleryComboBox::_onCurrentTextChanged);
    // The list sizes itself to its rows (and scrolls when long): a grip would only take room.
    m_popup->setSizeGripType(KSizeGrip::NoGrip);
    connect(m_popup, &KPopupWidget::aboutToHide, this, &KGalleryComboBox::popupHide);
    setModel(new KGalleryAbstractModel(this), type);
}

KGalleryComboBox::~KGalleryComboBox()
{
    KCommandBridgeHelper::unregisterIdle(this);
    // The view lives in the popup; both go with the box, the view first.
    delete m_view.data();
}

void KGalleryComboBox::setModel(KGalleryAbstractModel* model, KGalleryViewBase::GalleryViewType type)
{
    if (!model || model == m_model)
        return;
    m_popup->setContentWidget(nullptr);
    delete m_view.data();
    delete m_model.data();
    m_model = model;
    if (model->parent() != this)
        model->setParent(this);
    KGalleryViewBase* view = nullptr;
    if (type == KGalleryViewBase::FixedScrollView)
        view = new KFixedScrollGalleryView(model, m_popup);
    else
        view = new KScrollGalleryView(model, m_popup);
    setGalleryView(view);
}

void KGalleryComboBox::setGalleryView(KGalleryViewBase* view)
{
    if (!view || view == m_view)
        return;
    if (m_view) {
        m_popup->setContentWidget(nullptr);
        delete m_view.data();
    }
    m_view = view;
    if (view->model() && view->model() != m_model) {
        delete m_model.data();
        m_model = view->model();
        if (m_model->parent() != this)
            m_model->setParent(this);
    }
    m_popup->setContentWidget(view);
    on_completerChanged();
    if (KGalleryAbstractModel* model = m_model.data()) {
        connect(model, &KGalleryAbstractModel::indexClicked, this, &KGalleryComboBox::on_modelItem_clicked,
                Qt::UniqueConnection);
        connect(model, &KGalleryAbstractModel::elementInserted, this, &KGalleryComboBox::on_completerChanged,
                Qt::UniqueConnection);
    }
}

bool KGalleryComboBox::isEditable() const
{
    return lineEdit() != nullptr;
}

void KGalleryComboBox::setEditable(bool editable)
{
    if (editable == isEditable())
        return;
    if (!editable) {
        _setLineWidget(nullptr);
        return;
    }
    auto* edit = new KGalleryComboBoxLineEdit(this);
    edit->setText(m_currentText);
    connect(edit, &QLineEdit::returnPressed, this, &KGalleryComboBox::on_lineWidget_return);
    _setLineWidget(edit);
    edit->setCompleter(m_completer.data());
}

void KGalleryComboBox::setLineWidget(KGalleryComboBoxLineWidget* widget)
{
    _setLineWidget(widget);
    if (widget && m_model) {
        const int current = m_model->currentIndex();
        widget->on_item_changed(current >= 0 && current < m_model->count() ? m_model->element(current) : nullptr);
    }
}

void KGalleryComboBox::_setLineWidget(QWidget* widget)
{
    if (widget == m_lineWidget)
        return;
    delete m_lineWidget.data();
    m_lineWidget = widget;
    if (widget) {
        widget->setParent(this);
        widget->installEventFilter(this);
        setFocusProxy(widget);
        _placeLineWidget();
        widget->show();
    } else {
        setFocusProxy(nullptr);
    }
    update();
}

KGalleryComboBoxLineEdit* KGalleryComboBox::lineEdit() const
{
    return qobject_cast<KGalleryComboBoxLineEdit*>(m_lineWidget.data());
}

int KGalleryComboBox::currentIndex() const
{
    return m_model ? m_model->currentIndex() : -1;
}

int KGalleryComboBox::findText(const QString& text) const
{
    KGalleryAbstractModel* model = m_model.data();
    if (!model)
        return -1;
    for (int i = 0; i < model->count(); ++i) {
        if (model->element(i)->text().compare(text, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

void KGalleryComboBox::setCompleter(QCompleter* completer)
{
    if (completer == m_completer)
        return;
    if (m_completer && m_completer->parent() == this)
        m_completer->deleteLater();
    m_completer = completer;
    if (KGalleryComboBoxLineEdit* edit = lineEdit())
        edit->setCompleter(completer);
    if (completer)
        connect(completer, qOverload<const QString&>(&QCompleter::activated), this,
                &KGalleryComboBox::on_completerActivated);
    Q_EMIT completerChanged(completer);
}

void KGalleryComboBox::on_completerChanged()
{
    KGalleryAbstractModel* model = m_model.data();
    QStringList texts;
    if (model) {
        for (int i = 0; i < model->count(); ++i) {
            KGalleryModelAbstractItem* element = model->element(i);
            if (!element->property(KGALLERY_COMBOX_COMPLETE).toBool())
                texts << element->text();
        }
    }
    auto* completer = new QCompleter(texts, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    setCompleter(completer);
}

void KGalleryComboBox::setFixedWidth2(int width)
{
    if (width == m_fixedWidth)
        return;
    m_fixedWidth = width;
    updateGeometry();
}

void KGalleryComboBox::setDefaultCommand(KCommand* command)
{
    if (command == m_command)
        return;
    if (m_command)
        disconnect(m_command.data(), nullptr, this, nullptr);
    m_command = command;
    if (command) {
        connect(command, &KCommand::changed, this, &KGalleryComboBox::syncCommand);
        connect(command, &QObject::destroyed, this, &KGalleryComboBox::syncCommand);
        // The idle rounds keep the command, and through it the box, up to date.
        KCommandBridgeHelper::registerIdle(this, true);
    } else {
        KCommandBridgeHelper::unregisterIdle(this);
    }
    syncCommand();
}

void KGalleryComboBox::syncCommand()
{
    KCommand* command = m_command.data();
    if (!command)
        return;
    setEnabled(command->isEnabled());
    // Hidden at once; shown again only after an explicit hide, so that a box that was never
    // shown is left to its parent.
    if (!command->isVisible())
        hide();
    else if (isHidden() && testAttribute(Qt::WA_WState_ExplicitShowHide))
        show();
}

// --- choosing ---

void KGalleryComboBox::on_modelItem_clicked(int idx)
{
    KGalleryAbstractModel* model = m_model.data();
    if (!model || idx < 0 || idx >= model->count())
        return;
    KGalleryModelAbstractItem* item = model->element(idx);
    const QString text = item->text();
    Q_EMIT indexClicked(idx);
    Q_EMIT indexClicked(item);
    Q_EMIT currentTextChanged(text);
    Q_EMIT indexClicked(text);
}

void KGalleryComboBox::setCurrentIndex(int index, bool emitSignal)
{
    KGalleryAbstractModel* model = m_model.data();
    if (!model)
        return;
    if (emitSignal) {
        model->clickIndex(index);
        return;
    }
    model->setCurrentIndex(index);
    const bool valid = index >= 0 && index < model->count();
    Q_EMIT currentTextChanged(valid ? model->element(index)->text() : QString());
}

void KGalleryComboBox::setCurrentIndex(int index)
{
    setCurrentIndex(index, false);
}

void KGalleryComboBox::setCurrentText(const QString& text, bool emitSignal)
{
    KGalleryAbstractModel* model = m_model.data();
    if ((!model || model->count() == 0) && !emitSignal) {
        Q_EMIT currentTextChanged(text);
        return;
    }
    if (text != currentText())
        setCurrentIndex(findText(text), emitSignal);
    if (emitSignal && m_lineWidget) {
        QFocusEvent focusOut(QEvent::FocusOut, Qt::OtherFocusReason);
        QCoreApplication::sendEvent(m_lineWidget.data(), &focusOut);
        if (KApplication* app = KApplication::instance())
            app->focusInCurrentView();
    }
}

void KGalleryComboBox::setCurrentText(const QString& text)
{
    setCurrentText(text, false);
}

void KGalleryComboBox::on_completerActivated(const QString& text)
{
    setCurrentText(text, true);
}

void KGalleryComboBox::on_lineWidget_return()
{
    QString text;
    if (KGalleryComboBoxLineEdit* edit = lineEdit())
        text = edit->text();
    else if (m_lineWidget)
        text = m_lineWidget->property("text").toString();
    setCurrentText(text, true);
}

void KGalleryComboBox::_onCurrentTextChanged(const QString& text)
{
    m_currentText = text;
    if (KGalleryComboBoxLineEdit* edit = lineEdit())
        edit->setText(text);
    if (auto* widget = qobject_cast<KGalleryComboBoxLineWidget*>(m_lineWidget.data())) {
        const int current = currentIndex();
        widget->on_item_changed(m_model && current >= 0 && current < m_model->count() ? m_model->element(current)
                                                                                      : nullptr);
    }
    update();
}

void KGalleryComboBox::popup()
{
    KGalleryViewBase* view = m_view.data();
    if (!view)
        return;
    view->setMinimumWidth(qMax(view->minimumWidth(), width()));
    // Both measure themselves afresh: the list may have changed since the last opening.
    view->setAttribute(Qt::WA_Resized, false);
    m_popup->setAttribute(Qt::WA_Resized, false);
    m_popup->clearSizeAttitude();
    // Sizes cached by the layouts predate the elements added since.
    view->updateGeometry();
    if (QLayout* layout = view->layout())
        layout->invalidate();
    if (QLayout* layout = m_popup->layout())
        layout->invalidate();
    const int current = currentIndex();
    m_popup->show(this, mapToGlobal(rect().bottomLeft() + QPoint(0, 1)));
    if (current >= 0)
        view->scrollToIndex(current);
}

void KGalleryComboBox::popupHide()
{
    update();
}

// --- events ---

bool KGalleryComboBox::event(QEvent* e)
{
    switch (int(e->type())) {
    case QEvent::ToolTip:
        if (KCommand* command = m_command.data()) {
            QString tip = command->text();
            if (!command->shortcutHint().isEmpty())
                tip += QStringLiteral(" (") + command->shortcutHint() + QLatin1Char(')');
            QToolTip::showText(static_cast<QHelpEvent*>(e)->globalPos(), tip, this);
            return true;
        }
        break;
    case KEvent::Idle:
        if (KCommand* command = m_command.data())
            command->update();
        return true;
    default:
        break;
    }
    return QWidget::event(e);
}

bool KGalleryComboBox::eventFilter(QObject* watched, QEvent* e)
{
    if (watched != m_lineWidget.data())
        return QWidget::eventFilter(watched, e);
    KGalleryComboBoxLineEdit* edit = lineEdit();
    switch (e->type()) {
    case QEvent::KeyPress: {
        if (!edit)
            break;
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_F4) {
            popup();
            return true;
        }
        if (key == Qt::Key_Escape) {
            edit->setText(currentText());
            return true;
        }
        break;
    }
    case QEvent::FocusOut:
        if (edit && edit->text() != currentText())
            setCurrentText(edit->text(), true);
        break;
    case QEvent::MouseButtonPress:
        if (!edit) {
            popup();
            return true;
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, e);
}

void KGalleryComboBox::keyPressEvent(QKeyEvent* e)
{
    if (e->key() == Qt::Key_Down || e->key() == Qt::Key_F4) {
        popup();
        return;
    }
    QWidget::keyPressEvent(e);
}

void KGalleryComboBox::mousePressEvent(QMouseEvent* e)
{
    if (e->button() != Qt::LeftButton)
        return;
    const bool onArrow = arrowRect().contains(e->position().toPoint());
    if ((onArrow || !lineEdit()) && !m_popup->isVisible())
        popup();
}

void KGalleryComboBox::initStyleOption(QStyleOptionComboBox* option) const
{
    option->initFrom(this);
    option->editable = lineEdit() != nullptr;
    option->frame = true;
    option->subControls = QStyle::SC_All;
    if (m_popup->isVisible()) {
        option->state |= QStyle::State_On;
        option->activeSubControls = QStyle::SC_ComboBoxArrow;
    }
    if (!m_lineWidget)
        option->currentText = m_currentText;
}

QRect KGalleryComboBox::editFieldRect() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
}

QRect KGalleryComboBox::arrowRect() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this);
}

void KGalleryComboBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    style()->drawComplexControl(QStyle::CC_ComboBox, &option, &painter, this);
    if (!m_lineWidget)
        style()->drawControl(QStyle::CE_ComboBoxLabel, &option, &painter, this);
}

void KGalleryComboBox::resizeEvent(QResizeEvent* e)
{
    QWidget::resizeEvent(e);
    _placeLineWidget();
}

void KGalleryComboBox::_placeLineWidget()
{
    if (m_lineWidget)
        m_lineWidget->setGeometry(editFieldRect());
}

QSize KGalleryComboBox::sizeHint() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QFontMetrics fm = fontMetrics();
    QSize content(fm.horizontalAdvance(QStringLiteral("Xxxxxxxxxxxx")), qMax(fm.height(), 16));
    const int width = m_fixedWidth > 0 ? m_fixedWidth : -1;
    QSize hint = style()->sizeFromContents(QStyle::CT_ComboBox, &option, content, this);
    if (width > 0)
        hint.setWidth(width);
    return hint;
}

QSize KGalleryComboBox::minimumSizeHint() const
{
    return sizeHint();
}
