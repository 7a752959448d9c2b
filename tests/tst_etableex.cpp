// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "cgtest.h"

#include "ebox.h"
#include "eeditbox.h"
#include "etableex.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>

namespace {

enum Column { TextColumn, CheckColumn, ComboColumn, EditColumn, ProgressColumn, SpinColumn, Columns };
const int kinds[Columns] = {ETableModelEx::Text, ETableModelEx::CheckBox, ETableModelEx::ComboBox,
                            ETableModelEx::EditBox, ETableModelEx::ProgressBar, ETableModelEx::SpinBox};
const QStringList protocols{QStringLiteral("tcp"), QStringLiteral("udp"), QStringLiteral("icmp"), QStringLiteral("esp")};

/// One row per job; each column holds one kind of cell. Every call from the table is recorded.
class JobModel : public ETableModelEx
{
public:
    explicit JobModel(int rows)
        : ETableModelEx(Columns, nullptr)
    {
        for (int r = 0; r < rows; ++r) {
            texts << QStringList{QStringLiteral("job %1").arg(r), QString(), protocols.at(r % 4),
                                 QStringLiteral("note %1").arg(r), QString(), QString::number(r + 7)};
            checked << (r % 2 == 1);
        }
    }
    int getRowCount() const override { return texts.size(); }
    QString getCell(int row, int column) const override { return texts.at(row).at(column); }
    int getCellType(int, int column) const override { return column >= 0 && column < Columns ? kinds[column] : 0; }

    void setCheckBox(int row, int, bool on) override
    {
        calls << QStringLiteral("check %1 %2").arg(row).arg(on);
        checked[row] = on;
    }
    bool getCheckBox(int row, int) const override { return checked.at(row); }
    void fillComboBox(int row, int, EComboBox* combo) override
    {
        calls << QStringLiteral("fill combo %1").arg(row);
        for (const QString& p : protocols)
            combo->boxModel()->append(new EBoxItem(p));
    }
    void setComboBox(int row, int column, EComboBox* combo) override
    {
        calls << QStringLiteral("combo %1 %2").arg(row).arg(combo->currentText());
        texts[row][column] = combo->currentText();
    }
    void setEditBox(int row, int column, EEditBox* edit, const QString& text) override
    {
        calls << QStringLiteral("edit %1 %2 %3").arg(row).arg(text).arg(edit != nullptr);
        texts[row][column] = text;
    }
    void fillSpinBox(int row, int, ESpinBox* spin) override
    {
        calls << QStringLiteral("fill spin %1").arg(row);
        spin->setRange(0, 500);
    }
    void setSpinBox(int row, int column, ESpinBox*, const QString& text) override
    {
        calls << QStringLiteral("spin %1 %2").arg(row).arg(text);
        texts[row][column] = text;
    }
    int getProgress(int, int, QColor& c) const override
    {
        c = barColour;
        return progress;
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        if (role == Qt::EditRole)
            calls << QStringLiteral("setData %1 %2").arg(index.row()).arg(value.toString());
        return ETableModelEx::setData(index, value, role);
    }

    QVector<QStringList> texts;
    QVector<bool> checked;
    QStringList calls;
    int progress = 50;
    QColor barColour = QColor(40, 160, 60);
};

struct Shown
{
    JobModel* model = new JobModel(6);
    ETableEx table{0x3f, model, true};
    Shown()
    {
        for (int c = 0; c < Columns; ++c)
            table.setColumnWidth(c, 90);
        table.resize(700, 300);
        table.show();
        QApplication::setActiveWindow(&table);
    }
    QModelIndex at(int row, int column) const { return model->index(row, column); }
    QWidget* editorAt(int row, int column) const { return table.indexWidget(at(row, column)); }
};

// The progress cell painted into an image of the cell's size, with a label font that has no
// antialiasing, so every label pixel is exactly black or white.
QImage renderProgress(JobModel& model, const QSize& size)
{
    ETableDelegateEx delegate;
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(255, 0, 255));
    QPainter painter(&image);
    QFont font = painter.font();
    font.setStyleStrategy(QFont::NoAntialias);
    font.setPixelSize(11);
    painter.setFont(font);
    QStyleOptionViewItem option;
    option.rect = QRect(QPoint(0, 0), size);
    option.state |= QStyle::State_Selected; // progress cells ignore the selection
    delegate.paint(&painter, option, model.index(0, ProgressColumn));
    return image;
}

QRect boundsOf(const QImage& image, QRgb colour, const QRect& inside)
{
    QRect bounds;
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            if (image.pixel(x, y) == colour)
                bounds |= QRect(x, y, 1, 1);
    return bounds;
}

} // namespace

class TestETableEx : public QObject
{
    Q_OBJECT

private slots:
    void flagsAndCheckStateFollowTheKind();
    void checkStateIsWrittenOnlyForCheckCells();
    void clickingACheckCellTogglesIt();
    void comboEditorFollowsTheCurrentCell();
    void arrowKeysInTheComboCommitNothingUntilEnter();
    void mouseChoiceInTheComboCommitsAtOnce();
    void everySpinChangeReachesTheModel();
    void editCellHandsItsTextToTheModel();
    void otherKindsWriteNothingBack();
    void rowHeightFitsTheEditors_data();
    void rowHeightFitsTheEditors();
    void progressBarPixels_data();
    void progressBarPixels();
    void progressLabelIsClampedAndShadowed();
    void progressCellsArePaintedInTheView();
    void modelPassesTheTester();
};

void TestETableEx::flagsAndCheckStateFollowTheKind()
{
    JobModel model(2);
    const Qt::ItemFlags base = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    const Qt::ItemFlags expected[Columns] = {base, base | Qt::ItemIsUserCheckable, base | Qt::ItemIsEditable,
                                             base | Qt::ItemIsEditable, base, base | Qt::ItemIsEditable};
    for (int c = 0; c < Columns; ++c) {
        QCOMPARE(model.flags(model.index(0, c)), expected[c]);
        QCOMPARE(model.index(1, c).data(Qt::CheckStateRole).isValid(), c == CheckColumn);
    }
    QCOMPARE(model.index(0, CheckColumn).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QCOMPARE(model.index(1, CheckColumn).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    QCOMPARE(model.flags(QModelIndex()), Qt::ItemFlags(Qt::ItemIsEnabled));
    QVERIFY(!model.data(QModelIndex(), Qt::CheckStateRole).isValid());
    QCOMPARE(model.getColumnCount(), int(Columns));
    QCOMPARE(model.getHeader(2), QString()); // no titles given
    QCOMPARE(model.getHeader(99), QString());

    // A mixed kind is editable by its bits; an unknown kind gets nothing.
    struct Mixed : JobModel
    {
        Mixed() : JobModel(1) {}
        int getCellType(int, int column) const override { return column == 0 ? (4 | 8) : 64; }
    } mixed;
    QVERIFY(mixed.flags(mixed.index(0, 0)) & Qt::ItemIsEditable);
    QCOMPARE(mixed.flags(mixed.index(0, 1)), base);
}

void TestETableEx::checkStateIsWrittenOnlyForCheckCells()
{
    JobModel model(2);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QVERIFY(model.setData(model.index(0, CheckColumn), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(model.calls, QStringList{"check 0 1"});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toModelIndex(), model.index(0, CheckColumn));

    QVERIFY(!model.setData(model.index(0, TextColumn), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!model.setData(model.index(0, CheckColumn), QStringLiteral("x"), Qt::EditRole));
    QVERIFY(!model.setData(QModelIndex(), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(changed.count(), 1);
}

void TestETableEx::clickingACheckCellTogglesIt()
{
    Shown s;
    QVERIFY(QTest::qWaitForWindowExposed(&s.table));
    const QRect cell = s.table.visualRect(s.at(0, CheckColumn));
    QStyle* style = s.table.style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &s.table) + 1;
    const QPoint onBox(cell.left() + margin + style->pixelMetric(QStyle::PM_IndicatorWidth) / 2, cell.center().y());

    const QImage before = s.table.viewport()->grab(cell).toImage();
    QTest::mouseClick(s.table.viewport(), Qt::LeftButton, Qt::NoModifier, onBox);
    QCOMPARE(s.model->calls, QStringList{"check 0 1"});
    QVERIFY(s.model->checked[0]);
    QTRY_VERIFY(s.table.viewport()->grab(cell).toImage() != before); // repainted checked

    QTest::mouseClick(s.table.viewport(), Qt::LeftButton, Qt::NoModifier, onBox);
    QCOMPARE(s.model->calls.last(), QStringLiteral("check 0 0"));
    QTRY_COMPARE(s.table.viewport()->grab(cell).toImage(), before);

    // Beside the box the click only selects.
    QTest::mouseClick(s.table.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(cell.right() - 4, cell.center().y()));
    QCOMPARE(s.model->calls.size(), 2);
}

void TestETableEx::comboEditorFollowsTheCurrentCell()
{
    Shown s;
    QVERIFY(QTest::qWaitForWindowExposed(&s.table));
    s.table.setCurrentIndex(s.at(1, CheckColumn));
    QVERIFY(!s.editorAt(1, ComboColumn));

    QTest::keyClick(&s.table, Qt::Key_Right);
    auto* combo = qobject_cast<ETableComboBox*>(s.editorAt(1, ComboColumn));
    QVERIFY(combo);
    QCOMPARE(s.model->calls, QStringList{"fill combo 1"});
    QCOMPARE(combo->count(), protocols.size());
    QCOMPARE(combo->currentText(), QStringLiteral("udp")); // the cell's text
    QVERIFY(!combo->hasFrame());
    QCOMPARE(combo->geometry(), s.table.visualRect(s.at(1, ComboColumn)));

    QTest::keyClick(&s.table, Qt::Key_Right);
    QVERIFY(!s.editorAt(1, ComboColumn));
    QCOMPARE(s.table.currentIndex(), s.at(1, EditColumn));

    // Down from one combo cell to the next: the old editor closes, a new one opens on row 2.
    s.table.setCurrentIndex(s.at(1, ComboColumn));
    s.table.setCurrentIndex(s.at(2, ComboColumn));
    QVERIFY(!s.editorAt(1, ComboColumn));
    QVERIFY(s.editorAt(2, ComboColumn));
    QCOMPARE(s.model->calls.count(QStringLiteral("fill combo 2")), 1);
    // Leaving with the keyboard took the focus out of the editor, which committed what it showed;
    // moving the current cell from code closes the editor without writing.
    QCOMPARE(s.model->calls, (QStringList{"fill combo 1", "setData 1 udp", "combo 1 udp", "fill combo 1", "fill combo 2"}));
}

void TestETableEx::arrowKeysInTheComboCommitNothingUntilEnter()
{
    Shown s;
    QVERIFY(QTest::qWaitForWindowExposed(&s.table));
    s.table.setCurrentIndex(s.at(0, ComboColumn));
    auto* combo = qobject_cast<ETableComboBox*>(s.editorAt(0, ComboColumn));
    QVERIFY(combo);
    s.model->calls.clear();

    QTest::keyClick(combo, Qt::Key_Down);
    QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(combo->currentText(), QStringLiteral("icmp"));
    QCOMPARE(s.model->calls, QStringList());
    QCOMPARE(s.model->texts[0][ComboColumn], QStringLiteral("tcp"));

    QTest::keyClick(combo, Qt::Key_Return);
    // Enter commits; the table taking the focus back may commit the same value once more.
    QTRY_VERIFY(s.model->calls.contains(QStringLiteral("combo 0 icmp")));
    QCOMPARE(s.model->calls.first(), QStringLiteral("setData 0 icmp"));
    QCOMPARE(s.model->calls.filter(QStringLiteral("icmp")), s.model->calls);
    QCOMPARE(s.model->texts[0][ComboColumn], QStringLiteral("icmp"));
}

void TestETableEx::mouseChoiceInTheComboCommitsAtOnce()
{
    Shown s;
    QVERIFY(QTest::qWaitForWindowExposed(&s.table));
    s.table.setCurrentIndex(s.at(3, ComboColumn));
    auto* combo = qobject_cast<ETableComboBox*>(s.editorAt(3, ComboColumn));
    QVERIFY(combo);
    s.model->calls.clear();
    QSignalSpy changed(s.model, &QAbstractItemModel::dataChanged);

    combo->showPopup();
    QTRY_VERIFY(combo->view()->isVisible());
    QAbstractItemView* list = combo->view();
    const QPoint onUdp = list->visualRect(list->model()->index(1, 0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, onUdp);
    QTRY_VERIFY(!list->isVisible());
    QCOMPARE(s.model->calls, (QStringList{"setData 3 udp", "combo 3 udp"}));
    QVERIFY(!changed.isEmpty());
    QCOMPARE(changed.last().at(0).toModelIndex(), s.at(3, ComboColumn));
}

void TestETableEx::everySpinChangeReachesTheModel()
{
    Shown s;
    QVERIFY(QTest::qWaitForWindowExposed(&s.table));
    s.table.setCurrentIndex(s.at(2, SpinColumn));
    QTest::keyClick(&s.table, Qt::Key_F2);
    auto* spin = qobject_cast<ETableSpinBox*>(s.editorAt(2, SpinColumn));
    if (!spin)
        spin = s.table.viewport()->findChild<ETableSpinBox*>();
    QVERIFY(spin);
    QCOMPARE(spin->value(), 9);           // "9", the cell's text
    QCOMPARE(spin->maximum(), 500);       // set up by the model
    QCOMPARE(s.model->calls, QStringList{"fill spin 2"});
    QCOMPARE(spin->geometry(), s.table.visualRect(s.at(2, SpinColumn)));

    spin->selectAll();
    QTest::keyClicks(spin, QStringLiteral("42"));
    QTest::keyClick(spin, Qt::Key_Up);
    QCOMPARE(s.model->calls.mid(1), (QStringList{"spin 2 4", "spin 2 42", "spin 2 43"}));
    QCOMPARE(s.model->texts[2][SpinColumn], QStringLiteral("43"));
}

void TestETableEx::editCellHandsItsTextToTheModel()
{
    Shown s;
    QVERIFY(QTest::qWaitForWindowExposed(&s.table));
    s.table.setCurrentIndex(s.at(4, EditColumn));
    QTest::keyClick(&s.table, Qt::Key_F2);
    auto* edit = s.table.viewport()->findChild<QLineEdit*>();
    QVERIFY(edit);
    QVERIFY(dynamic_cast<EEditBox*>(edit));
    QCOMPARE(edit->text(), QStringLiteral("note 4"));
    QCOMPARE(edit->geometry(), s.table.visualRect(s.at(4, EditColumn)));
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("gateway"));
    QCOMPARE(s.model->calls, QStringList());  // typing alone writes nothing
    QTest::keyClick(edit, Qt::Key_Return);
    QTRY_COMPARE(s.model->calls, QStringList{"edit 4 gateway 1"});
    QCOMPARE(s.model->index(4, EditColumn).data().toString(), QStringLiteral("gateway"));
}

void TestETableEx::otherKindsWriteNothingBack()
{
    JobModel model(1);
    ETableDelegateEx delegate;
    QLineEdit editor;
    editor.setText(QStringLiteral("typed"));
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    delegate.setModelData(&editor, &model, model.index(0, TextColumn));
    QCOMPARE(editor.text(), QStringLiteral("job 0")); // put back from the model
    QCOMPARE(model.texts[0][TextColumn], QStringLiteral("job 0"));
    QCOMPARE(model.calls, QStringList());
    QCOMPARE(changed.count(), 1);
}

void TestETableEx::rowHeightFitsTheEditors_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<int>("expected");
    ETable plain;
    const int standard = plain.verticalHeader()->defaultSectionSize();
    const int combo = EComboBox().sizeHint().height();
    const int spin = ESpinBox().sizeHint().height();
    const int edit = EEditBox().sizeHint().height();
    QTest::newRow("progress alone") << 16 << std::max(20, -1);
    QTest::newRow("text keeps the table's height") << 1 << standard;
    QTest::newRow("check box keeps it") << 2 << standard;
    QTest::newRow("text and check box") << 3 << standard;
    QTest::newRow("combo") << 4 << combo;
    QTest::newRow("edit") << 8 << edit;
    QTest::newRow("spin") << 32 << spin;
    QTest::newRow("every kind") << 63 << std::max({combo, edit, spin, 20});
}

void TestETableEx::rowHeightFitsTheEditors()
{
    QFETCH(int, mask);
    QFETCH(int, expected);
    ETableEx table(mask);
    QCOMPARE(table.verticalHeader()->defaultSectionSize(), expected);
    QVERIFY(qobject_cast<ETableDelegateEx*>(table.itemDelegate()));
    QCOMPARE(table.itemDelegate()->parent(), &table);
}

void TestETableEx::progressBarPixels_data()
{
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("filled");     // width of the coloured part for a 101 x 21 cell
    QTest::newRow("half") << 50 << 50;
    QTest::newRow("a third truncates") << 33 << 33;
    QTest::newRow("full") << 100 << 100;
    QTest::newRow("above 100 is full") << 150 << 100;
    QTest::newRow("nothing") << 0 << 0;
    QTest::newRow("negative is empty") << -5 << 0;
}

void TestETableEx::progressBarPixels()
{
    QFETCH(int, percent);
    QFETCH(int, filled);
    JobModel model(1);
    model.progress = percent;
    model.barColour = QColor(200, 40, 90);
    const QImage image = renderProgress(model, QSize(101, 21));
    const QRgb bar = qRgb(200, 40, 90), border = qRgb(100, 20, 45), white = qRgb(255, 255, 255);

    // Sample the row at y = 3, above the label: bar, then white, with border lines.
    for (int x = 1; x < 100; ++x) {
        const QRgb expected = x == filled ? border : x < filled ? bar : white;
        QCOMPARE(QColor(image.pixel(x, 3)), QColor(expected));
    }
    QCOMPARE(QColor(image.pixel(0, 10)), QColor(border));
    QCOMPARE(QColor(image.pixel(100, 10)), QColor(border));
    QCOMPARE(QColor(image.pixel(40, 0)), QColor(border));
    QCOMPARE(QColor(image.pixel(40, 20)), QColor(border));
    // The cell's last column and row are not covered (the bar is one pixel narrower than w + 1).
    QCOMPARE(QColor(image.pixel(50, 20)), QColor(border));
    QCOMPARE(image.pixel(100, 10), image.pixel(100, 3));
}

void TestETableEx::progressLabelIsClampedAndShadowed()
{
    JobModel model(1);
    model.barColour = QColor(30, 30, 200);
    auto render = [&model](int percent) {
        model.progress = percent;
        return renderProgress(model, QSize(101, 21));
    };
    QCOMPARE(render(150), render(100));
    QCOMPARE(render(-5), render(0));
    QVERIFY(render(100) != render(99));
    QVERIFY(render(0) != render(1));

    // On a full blue bar the only white is the label's shadow: the black label moved one pixel
    // right and down, so the shadow's far edges are one pixel beyond the label's.
    const QImage full = render(100);
    const QRect interior(1, 1, 99, 19);
    const QRect label = boundsOf(full, qRgb(0, 0, 0), interior);
    const QRect shadow = boundsOf(full, qRgb(255, 255, 255), interior);
    QVERIFY(!label.isEmpty());
    QVERIFY(!shadow.isEmpty());
    QCOMPARE(shadow.right(), label.right() + 1);
    QCOMPARE(shadow.bottom(), label.bottom() + 1);
    QVERIFY(qAbs(label.center().x() - 50) <= 2); // centred
    QFont font;
    font.setPixelSize(11);
    QVERIFY(qAbs(label.width() - QFontMetrics(font).horizontalAdvance(QStringLiteral("100%"))) <= 2);

    // A cell too small to hold a bar is left untouched.
    model.progress = 50;
    const QImage tiny = renderProgress(model, QSize(1, 21));
    QCOMPARE(QColor(tiny.pixel(0, 5)), QColor(255, 0, 255));
}

void TestETableEx::progressCellsArePaintedInTheView()
{
    Shown s;
    QVERIFY(QTest::qWaitForWindowExposed(&s.table));
    s.model->progress = 100;
    s.table.selectRow(0); // a selected progress cell still shows its bar colour
    const QRect cell = s.table.visualRect(s.at(0, ProgressColumn));
    const QImage shot = s.table.viewport()->grab().toImage();
    const qreal ratio = shot.devicePixelRatio();
    QCOMPARE(QColor(shot.pixel(QPoint(cell.left() + 3, cell.top() + 2) * ratio)), s.model->barColour);
}

namespace {

QStringList testerComplaints;

void collectComplaint(QtMsgType, const QMessageLogContext&, const QString& message)
{
    testerComplaints << message;
}

} // namespace

void TestETableEx::modelPassesTheTester()
{
    JobModel model(5);
    // The root answers "enabled" on purpose (views rely on it), which the tester's root-flags
    // rule refuses; every other rule must hold.
    testerComplaints.clear();
    const QtMessageHandler previous = qInstallMessageHandler(collectComplaint);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    model.setData(model.index(2, CheckColumn), Qt::Checked, Qt::CheckStateRole);
    ETableEx table(0x3f, &model, false);
    table.setCurrentIndex(model.index(1, ComboColumn));
    table.setCurrentIndex(model.index(1, SpinColumn));
    qInstallMessageHandler(previous);
    QVERIFY(!testerComplaints.isEmpty());
    for (const QString& complaint : testerComplaints)
        QVERIFY2(complaint.contains(QLatin1String("flags == Qt::ItemIsDropEnabled")), qPrintable(complaint));
}

CG_TEST_MAIN(TestETableEx)
#include "tst_etableex.moc"
