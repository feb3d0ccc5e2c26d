// The colour control: its groups in order, the forty named colours of the palette, and what
// each kind of entry does to the current colour.
#include <ktestsupport.h>

#include <QScrollBar>
#include <QSignalSpy>

#include <kcolorctrl.h>
#include <kgallerymodeltextitem.h>
#include <kpopupwidget.h>
#include <kscrollgalleryview.h>

namespace {

int indexOfText(KGalleryAbstractModel* model, const QString& text)
{
    for (int i = 0; i < model->count(); ++i) {
        if (model->element(i)->text() == text)
            return i;
    }
    return -1;
}

} // namespace

class tst_KColorCtrl : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void palette_data();
    void palette();
    void groupsInOrder();
    void colorCells();
    void noColorAndColor();
    void sameColorInTwoGroups();
    void automaticAndBackground();
    void setCurrentColor();
    void chooseInOpenList();
};

void tst_KColorCtrl::palette_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("hex");
    const char* rows[40][2] = {
        {"Black", "#000000"},       {"Brown", "#993300"},           {"Olive Green", "#333300"},
        {"Dark Green", "#003300"},  {"Dark Teal", "#003366"},       {"Dark Blue", "#000080"},
        {"Indigo", "#333399"},      {"Gray-80%", "#333333"},        {"Dark Red", "#800000"},
        {"Orange", "#ff6600"},      {"Dark Yellow", "#808000"},     {"Green", "#008000"},
        {"Teal", "#008080"},        {"Blue", "#0000ff"},            {"Blue-Gray", "#666699"},
        {"Gray-50%", "#808080"},    {"Red", "#ff0000"},             {"Light Orange", "#ff9900"},
        {"Lime", "#99cc00"},        {"Sea Green", "#339966"},       {"Aqua", "#33cccc"},
        {"Light Blue", "#3366ff"},  {"Violet", "#800080"},          {"Gray-40%", "#969696"},
        {"Pink", "#ff00ff"},        {"Gold", "#ffcc00"},            {"Yellow", "#ffff00"},
        {"Bright Green", "#00ff00"}, {"Turquoise", "#00ffff"},      {"Sky Blue", "#00ccff"},
        {"Plum", "#993366"},        {"Gray-25%", "#c0c0c0"},        {"Rose", "#ff99cc"},
        {"Tan", "#ffcc99"},         {"Light Yellow", "#ffff99"},    {"Light Green", "#ccffcc"},
        {"Light Turquoise", "#ccffff"}, {"Pale Blue", "#99ccff"},   {"Lavender", "#cc99ff"},
        {"White", "#ffffff"},
    };
    for (int i = 0; i < 40; ++i)
        QTest::newRow(rows[i][0]) << i << QString::fromLatin1(rows[i][0]) << QString::fromLatin1(rows[i][1]);
}

void tst_KColorCtrl::palette()
{
    QFETCH(int, index);
    QFETCH(QString, name);
    QFETCH(QString, hex);
    QCOMPARE(KColorCtrl::defaultColorNames().size(), 40);
    QCOMPARE(KColorCtrl::defaultColors().size(), 40);
    QCOMPARE(KColorCtrl::defaultColorNames().at(index), name);
    const QColor color = KColorCtrl::defaultColors().at(index);
    QCOMPARE(color.name(), hex);
    QCOMPARE(color.alpha(), 255);
    // The cell in the control carries both, the name as its tool tip.
    KColorCtrl ctrl;
    KColorGroup* palette = ctrl.getPaletteColors();
    QCOMPARE(palette->itemCount(), 40);
    QCOMPARE(palette->colorAt(index), color);
    QCOMPARE(palette->getItem(index)->detail(), name);
}

void tst_KColorCtrl::groupsInOrder()
{
    KColorCtrl ctrl;
    const QList<KGalleryGroup*> expected = {ctrl.getNoColor(),          ctrl.getAutoColor(),
                                            ctrl.getSchemeColors(),     ctrl.getExpandSchemeColors(),
                                            ctrl.getPaletteColors(),    ctrl.getExtraColors(),
                                            ctrl.getMoreColor(),        ctrl.getFillEffect(),
                                            ctrl.getBackGround(),       ctrl.getPatternedLines()};
    QList<KGalleryGroup*> content;
    int separators = 0;
    for (int g = 0; g < ctrl.groupCount(); ++g) {
        if (ctrl.group(g)->isSeparator())
            ++separators;
        else
            content << ctrl.group(g);
    }
    QCOMPARE(content, expected);
    QCOMPARE(separators, 5);
    QCOMPARE(ctrl.groupCount(), 15);
    // Visible at first: Automatic, the palette and "More Color".
    QVERIFY(!ctrl.getNoColor()->isVisible());
    QVERIFY(ctrl.getAutoColor()->isVisible());
    QVERIFY(ctrl.getPaletteColors()->isVisible());
    QVERIFY(ctrl.getMoreColor()->isVisible());
    QVERIFY(!ctrl.getFillEffect()->isVisible());
    QVERIFY(!ctrl.getBackGround()->isVisible());
    QVERIFY(!ctrl.getPatternedLines()->isVisible());
    QCOMPARE(ctrl.getMoreColor()->getItem(0)->text(), QStringLiteral("&More Color"));
    QCOMPARE(ctrl.getAutoColor()->getItem(0), ctrl.getAutoColorItem());
    QVERIFY(qobject_cast<KxNoColorItem*>(ctrl.getNoColor()->getItem(0)));
    QVERIFY(qobject_cast<KxBackGroundColorItem*>(ctrl.getBackGround()->getItem(0)));
    // With the scheme groups empty, one separator stands each side of the palette.
    int shown = 0;
    for (int g = 0; g < ctrl.groupCount(); ++g)
        shown += ctrl.group(g)->isSeparator() && ctrl.group(g)->isVisible();
    QCOMPARE(shown, 2);
    QCOMPARE(ctrl.getLastSeparatorIndex(), ctrl.startInModel(ctrl.groupCount() - 5));
}

void tst_KColorCtrl::colorCells()
{
    KColorCtrl ctrl;
    ctrl.resize(120, 24);
    ctrl.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ctrl));
    ctrl.popup();
    auto* scroll = qobject_cast<KScrollGalleryView*>(ctrl.view());
    QVERIFY(scroll);
    KGalleryView* view = scroll->view();
    // The list opens at the size of its rows: nothing to scroll, no room left over.
    QCOMPARE(view->maxViewPort(), 0);
    QVERIFY(!scroll->scrollBar()->isVisible());
    QCOMPARE(view->height(), view->contentHeight());
    // Eight cells a row: the ninth starts the second row under the first.
    const int first = ctrl.startInModel(ctrl.indexOfGroup(ctrl.getPaletteColors()));
    const QRect c0 = view->item(first)->gemetry();
    const QRect c7 = view->item(first + 7)->gemetry();
    const QRect c8 = view->item(first + 8)->gemetry();
    QCOMPARE(c7.top(), c0.top());
    QCOMPARE(c8.left(), c0.left());
    QVERIFY(c8.top() > c0.top());
    QCOMPARE(view->item(first + 39)->gemetry().top() - c0.top(), 4 * (c8.top() - c0.top()));
    QVERIFY(view->width() >= c7.right());
    // The hidden entries take no room.
    QVERIFY(view->item(ctrl.startInModel(ctrl.indexOfGroup(ctrl.getNoColor())))->gemetry().isEmpty());
    ctrl.popupWidget()->hide();
}

void tst_KColorCtrl::noColorAndColor()
{
    KColorCtrl ctrl;
    KGalleryAbstractModel* model = ctrl.model();
    QSignalSpy changed(&ctrl, &KColorCtrl::currentColorChanged);
    const int red = indexOfText(model, QStringLiteral("Red"));
    QVERIFY(model->clickIndex(red));
    QCOMPARE(ctrl.currentColor(), QColor(Qt::red));
    QCOMPARE(ctrl.colorState(), 1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).value<QColor>(), QColor(Qt::red));
    QVERIFY(model->element(red)->isChecked());

    ctrl.getNoColor()->setVisible(true);
    const int none = indexOfText(model, QStringLiteral("No Color"));
    QVERIFY(model->clickIndex(none));
    QVERIFY(!ctrl.currentColor().isValid());
    QCOMPARE(ctrl.colorState(), 0);
    QCOMPARE(changed.count(), 2);
    QVERIFY(!changed.at(1).at(0).value<QColor>().isValid());
    QCOMPARE(ctrl.currentText(), QStringLiteral("No Color"));
    QVERIFY(!model->element(red)->isChecked());

    // Entries that only the host acts on leave the colour alone.
    QVERIFY(model->clickIndex(indexOfText(model, QStringLiteral("&More Color"))));
    QCOMPARE(changed.count(), 2);
    QCOMPARE(ctrl.colorState(), 0);
}

void tst_KColorCtrl::sameColorInTwoGroups()
{
    KColorCtrl ctrl;
    KGalleryAbstractModel* model = ctrl.model();
    KxColorItem* extraRed = ctrl.getExtraColors()->addColor(Qt::red, QStringLiteral("My red"));
    ctrl.getExtraColors()->addColor(Qt::blue, QStringLiteral("My blue"));
    const int paletteRed = indexOfText(model, QStringLiteral("Red"));
    QVERIFY(model->clickIndex(paletteRed));
    QVERIFY(model->element(paletteRed)->isChecked());
    QVERIFY(extraRed->isChecked());
    // Another colour unchecks both.
    QVERIFY(model->clickIndex(indexOfText(model, QStringLiteral("My blue"))));
    QVERIFY(!model->element(paletteRed)->isChecked());
    QVERIFY(!extraRed->isChecked());
    QCOMPARE(ctrl.currentColor(), QColor(Qt::blue));
    QVERIFY(ctrl.getExtraColors()->contains(Qt::blue));
    QVERIFY(!ctrl.getSchemeColors()->contains(Qt::blue));
}

void tst_KColorCtrl::automaticAndBackground()
{
    KColorCtrl ctrl;
    KGalleryAbstractModel* model = ctrl.model();
    ctrl.getSchemeColors()->addColors({QColor(Qt::black), QColor(Qt::darkBlue)}, {QStringLiteral("Text"), QString()});
    QCOMPARE(ctrl.getSchemeColors()->itemCount(), 2);
    QSignalSpy changed(&ctrl, &KColorCtrl::currentColorChanged);
    KxAutoColorItem* automatic = ctrl.getAutoColorItem();
    const int autoIndex = model->indexOf(automatic);
    // Without a colour, "Automatic" does nothing.
    QVERIFY(model->clickIndex(autoIndex));
    QCOMPARE(changed.count(), 0);
    automatic->setColor(Qt::black);
    QVERIFY(model->clickIndex(autoIndex));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(ctrl.currentColor(), QColor(Qt::black));
    QVERIFY(ctrl.getSchemeColors()->getItem(0)->isChecked());
    QVERIFY(!ctrl.getSchemeColors()->getItem(1)->isChecked());
    // In fixed mode the field shows the entry's text.
    automatic->setFixedMode(true);
    automatic->setColor(Qt::darkBlue);
    QVERIFY(model->clickIndex(autoIndex));
    QCOMPARE(ctrl.currentText(), QStringLiteral("Automatic"));
    QCOMPARE(ctrl.currentColor(), QColor(Qt::darkBlue));
    QCOMPARE(changed.count(), 2);

    // The background entry stores its colour without a signal.
    auto* background = qobject_cast<KxBackGroundColorItem*>(ctrl.getBackGround()->getItem(0));
    ctrl.getBackGround()->setVisible(true);
    background->setColor(Qt::yellow);
    QVERIFY(model->clickIndex(model->indexOf(background)));
    QCOMPARE(ctrl.currentColor(), QColor(Qt::yellow));
    QCOMPARE(changed.count(), 2);
}

void tst_KColorCtrl::setCurrentColor()
{
    KColorCtrl ctrl;
    KGalleryAbstractModel* model = ctrl.model();
    QSignalSpy changed(&ctrl, &KColorCtrl::currentColorChanged);
    ctrl.setCurrentColor(QColor(0x33, 0x99, 0x66), false); // "Sea Green"
    QCOMPARE(changed.count(), 0);
    const int sea = indexOfText(model, QStringLiteral("Sea Green"));
    QCOMPARE(model->currentIndex(), sea);
    QVERIFY(model->element(sea)->isChecked());
    ctrl.setCurrentColor(QColor(0x33, 0x99, 0x66), true); // the same: nothing
    QCOMPARE(changed.count(), 0);
    // A colour of no cell is still the current one; no cell stays checked.
    ctrl.setCurrentColor(QColor(1, 2, 3), true);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(ctrl.currentColor(), QColor(1, 2, 3));
    QVERIFY(!model->element(sea)->isChecked());
    ctrl.setCurrentColor(QColor(), true);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(ctrl.colorState(), 0);
}

void tst_KColorCtrl::chooseInOpenList()
{
    KColorCtrl ctrl;
    ctrl.resize(120, 24);
    ctrl.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ctrl));
    ctrl.popup();
    KPopupWidget* popup = ctrl.popupWidget();
    QVERIFY(popup->isVisible());
    KGalleryView* view = static_cast<KScrollGalleryView*>(ctrl.view())->view();
    QSignalSpy changed(&ctrl, &KColorCtrl::currentColorChanged);
    const int blue = indexOfText(ctrl.model(), QStringLiteral("Blue"));
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier,
                      view->item(blue)->gemetry().center() - QPoint(0, view->viewPort()));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(ctrl.currentColor(), QColor(Qt::blue));
    QVERIFY(!popup->isVisible());
    // The field shows the colour: a bar along the bottom of the field.
    const QImage image = ctrl.grab().toImage();
    QRect bar = ctrl.getEditFieldRect();
    ctrl.stateDrawAdjust(nullptr, bar);
    QCOMPARE(image.pixelColor(bar.center()), QColor(Qt::blue));
}

NORVIK_TEST_MAIN(tst_KColorCtrl)
#include "tst_kcolorctrl.moc"
