#include "PropertyPanel.h"

#include "DemoKinds.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QJsonArray>
#include <QSignalBlocker>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace Tavrin {
namespace demo {

namespace {

const QString kClassDefault = QStringLiteral("(class default)");

/// The combo box index of an entry value: 0 for absent, then the choices by name or
/// number (false, true for a flag).
int choiceIndex(const Option& option, const QJsonValue& value)
{
    if (value.isUndefined()) {
        return 0;
    }
    if (option.type == OptionType::Flag) {
        return value.toBool() ? 2 : 1;
    }
    if (value.isDouble()) {
        const int number = value.toInt(-1);
        return number >= 0 && number < static_cast<int>(option.choices.size()) ? number + 1 : 0;
    }
    return choiceNames(option).indexOf(value.toString()) + 1;
}

QString valueText(const Option& option, const QJsonValue& value)
{
    switch (option.type) {
    case OptionType::Text:
    case OptionType::Colour:
        return value.toString();
    default:
        return pointsText(value);
    }
}

QString placeholder(const Option& option)
{
    switch (option.type) {
    case OptionType::Colour:
        return QStringLiteral("#rrggbb");
    case OptionType::Point:
        return QStringLiteral("x, y");
    case OptionType::PointPair:
        return QStringLiteral("x, y; x, y");
    case OptionType::Numbers:
        return QStringLiteral("up to %1 numbers, 0 to 1").arg(option.max);
    default:
        return QStringLiteral("at most %1 characters").arg(option.max);
    }
}

}  // namespace

PropertyPanel::PropertyPanel(SceneDocument& document, QWidget* parent)
    : QWidget(parent), m_document(document), m_title(new QLabel(this)), m_form(new QWidget(this)),
      m_layout(new QFormLayout(m_form)), m_vertices(new QTableWidget(0, 2, this))
{
    auto* column = new QVBoxLayout(this);
    m_title->setTextFormat(Qt::PlainText);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    column->addWidget(m_title);
    column->addWidget(m_form);
    column->addWidget(new QLabel(QStringLiteral("Vertices (normalised, as sent to the camera; type to move one)"), this));
    m_vertices->setHorizontalHeaderLabels({QStringLiteral("x"), QStringLiteral("y")});
    // A double-click (or typing over a cell) takes a typed coordinate.
    m_vertices->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                                QAbstractItemView::AnyKeyPressed);
    m_vertices->setSelectionMode(QAbstractItemView::SingleSelection);
    // Applied once the table's own signal has returned: applying refills the table.
    connect(m_vertices, &QTableWidget::itemChanged, this,
            [this] { QTimer::singleShot(0, this, &PropertyPanel::applyTypedVertex); });
    m_vertices->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_vertices->verticalHeader()->setDefaultSectionSize(20);
    column->addWidget(m_vertices, 1);
    showSelection();
}

void PropertyPanel::showSelection()
{
    // Never called from inside an editor's own signal (a refusal defers it), so the old
    // editors can go at once.
    while (m_layout->count() > 0) {
        QLayoutItem* item = m_layout->takeAt(0);
        delete item->widget();
        delete item;
    }
    m_slot = m_document.view().selectedSlot();
    const QString kind = m_document.kind(m_slot);
    const Kind* known = findKind(kind);
    if (known == nullptr) {
        m_title->setText(QStringLiteral("No figure selected"));
        refreshVertices();
        return;
    }
    m_title->setText(QStringLiteral("%1 (slot %2)").arg(kind).arg(m_slot));
    const QJsonObject entry = m_document.entry(m_slot);
    addLabelEditor(entry);
    for (const Option& option : known->options) {
        addEditor(option, entry);
    }
    refreshVertices();
}

void PropertyPanel::refreshVertices()
{
    // Filling the table is not an edit of it.
    const QSignalBlocker quiet(m_vertices);
    const std::vector<tagTAVRIN_POINT> vertices = m_document.view().vertices(m_slot);
    m_vertices->setRowCount(static_cast<int>(vertices.size()));
    VcaObject* figure = m_document.view().object(m_slot);
    const int active = figure != nullptr ? static_cast<int>(figure->GetSelPointIndex()) : 0;
    for (int row = 0; row < static_cast<int>(vertices.size()); ++row) {
        const tagTAVRIN_POINT& v = vertices[static_cast<std::size_t>(row)];
        const float coordinates[2] = {v.x, v.y};
        for (int column = 0; column < 2; ++column) {
            auto* item = new QTableWidgetItem(QString::number(coordinates[column], 'f', 6));
            QFont font = item->font();
            font.setBold(row + 1 == active);
            item->setFont(font);
            m_vertices->setItem(row, column, item);
        }
    }
}

void PropertyPanel::applyTypedVertex()
{
    // The whole table as the figure's vertices: the scene reader checks them and says why
    // it refuses (a number outside 0..1, a count the kind does not take).
    QJsonArray vertices;
    for (int row = 0; row < m_vertices->rowCount(); ++row) {
        QJsonArray point;
        for (int column = 0; column < 2; ++column) {
            const QTableWidgetItem* item = m_vertices->item(row, column);
            bool ok = false;
            const double value = item != nullptr ? item->text().trimmed().toDouble(&ok) : 0.0;
            if (!ok) {
                emit message(QStringLiteral("vertex %1: \"%2\" is not a number").arg(row + 1).arg(item != nullptr ? item->text() : QString()));
                QTimer::singleShot(0, this, &PropertyPanel::refreshVertices);
                return;
            }
            point.append(value);
        }
        vertices.append(point);
    }
    apply(QStringLiteral("vertices"), vertices);
}

void PropertyPanel::addLabelEditor(const QJsonObject& entry)
{
    auto* edit = new QLineEdit(entry.value(QStringLiteral("label")).toString(), m_form);
    edit->setObjectName(QStringLiteral("label"));
    // No input limit: a longer label is refused by the scene reader, which says why,
    // rather than cut without a word.
    edit->setPlaceholderText(QStringLiteral("at most 16 characters"));
    connect(edit, &QLineEdit::editingFinished, this, [this, edit] {
        if (edit->isModified()) {
            edit->setModified(false);
            const QString text = edit->text();
            apply(QStringLiteral("label"), text.isEmpty() ? QJsonValue(QJsonValue::Undefined) : QJsonValue(text));
        }
    });
    m_layout->addRow(QStringLiteral("label"), edit);
}

void PropertyPanel::addEditor(const Option& option, const QJsonObject& entry)
{
    const QString key = QLatin1String(option.key);
    const QJsonValue value = entry.value(key);
    switch (option.type) {
    case OptionType::Flag:
    case OptionType::Choice: {
        auto* box = new QComboBox(m_form);
        box->setObjectName(key);
        box->addItem(kClassDefault);
        box->addItems(option.type == OptionType::Flag ? QStringList{QStringLiteral("false"), QStringLiteral("true")}
                                                      : choiceNames(option));
        box->setCurrentIndex(choiceIndex(option, value));
        const bool isFlag = option.type == OptionType::Flag;
        connect(box, QOverload<int>::of(&QComboBox::activated), this, [this, key, box, isFlag](int index) {
            if (index <= 0) {
                apply(key, QJsonValue(QJsonValue::Undefined));
            } else if (isFlag) {
                apply(key, index == 2);
            } else {
                apply(key, box->itemText(index));
            }
        });
        m_layout->addRow(key, box);
        break;
    }
    case OptionType::Integer: {
        auto* spin = new QSpinBox(m_form);
        spin->setObjectName(key);
        spin->setRange(option.min - 1, option.max);
        spin->setSpecialValueText(kClassDefault);
        spin->setValue(value.isDouble() ? value.toInt() : option.min - 1);
        spin->setKeyboardTracking(false);
        const int unset = option.min - 1;
        connect(spin, QOverload<int>::of(&QSpinBox::valueChanged), this, [this, key, unset](int number) {
            apply(key, number == unset ? QJsonValue(QJsonValue::Undefined) : QJsonValue(number));
        });
        m_layout->addRow(key, spin);
        break;
    }
    default: {
        auto* edit = new QLineEdit(valueText(option, value), m_form);
        edit->setObjectName(key);
        edit->setCursorPosition(0);  // long point lists show from their start
        edit->setPlaceholderText(placeholder(option));
        const OptionType type = option.type;
        connect(edit, &QLineEdit::editingFinished, this, [this, key, edit, type] {
            if (!edit->isModified()) {
                return;
            }
            edit->setModified(false);
            QJsonValue parsed;
            if (!parseOptionText(type, edit->text(), parsed)) {
                emit message(QStringLiteral("%1: cannot read \"%2\"").arg(key, edit->text().left(40)));
                QTimer::singleShot(0, this, &PropertyPanel::showSelection);
                return;
            }
            apply(key, parsed);
        });
        m_layout->addRow(key, edit);
        break;
    }
    }
}

void PropertyPanel::apply(const QString& key, const QJsonValue& value)
{
    QString error;
    const int slot = m_document.setOption(m_slot, key, value, error);
    if (slot < 0) {
        emit message(QStringLiteral("%1 refused: %2").arg(key, error));
        // Back to the figure's unchanged options, once the editor's signal has returned.
        QTimer::singleShot(0, this, &PropertyPanel::showSelection);
        return;
    }
    m_slot = slot;
    m_title->setText(QStringLiteral("%1 (slot %2)").arg(m_document.kind(slot)).arg(slot));
    emit message(QStringLiteral("%1 set").arg(key));
    refreshVertices();
    emit changed();
}

}  // namespace demo
}  // namespace Tavrin
