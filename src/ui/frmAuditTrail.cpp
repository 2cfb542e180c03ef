#include "ui/frmAuditTrail.h"

#include "platform/Prompt.h"
#include "platform/SafeFile.h"
#include "store/DbConnection.h"
#include "store/ProgramFolder.h"
#include "store/RunDatabase.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

const QString kAll = QStringLiteral("(all)");
const QString kTitle = QStringLiteral("Audit Trail");

} // namespace

frmAuditTrail::frmAuditTrail(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : QDialog(parent), mFolder(folder), mPrompt(prompt)
{
    setObjectName(QStringLiteral("frmAuditTrail"));
    setWindowTitle(kTitle);
    resize(1100, 600);

    auto *filters = new QFormLayout;
    mRunID = new QLineEdit(this);
    mRunID->setObjectName(QStringLiteral("txtRunID"));
    mPlateID = new QLineEdit(this);
    mPlateID->setObjectName(QStringLiteral("txtPlateID"));
    auto *ids = new QHBoxLayout;
    ids->addWidget(mRunID);
    ids->addWidget(mPlateID);
    filters->addRow(QStringLiteral("Run id, plate id:"), ids);
    mUser = valueCombo(QStringLiteral("cboUser"), QStringLiteral("OsUser"));
    mTechnician = valueCombo(QStringLiteral("cboTechnician"), QStringLiteral("Technician"));
    mAction = valueCombo(QStringLiteral("cboAction"), QStringLiteral("Action"));
    filters->addRow(QStringLiteral("User:"), mUser);
    filters->addRow(QStringLiteral("Technician:"), mTechnician);
    filters->addRow(QStringLiteral("Action:"), mAction);
    auto *dates = new QHBoxLayout;
    mUseFrom = new QCheckBox(QStringLiteral("From"), this);
    mUseFrom->setObjectName(QStringLiteral("chkFrom"));
    mFrom = new QDateEdit(QDate::currentDate(), this);
    mFrom->setObjectName(QStringLiteral("dtFrom"));
    mFrom->setDisplayFormat(QStringLiteral("M/d/yyyy"));
    mUseTo = new QCheckBox(QStringLiteral("To"), this);
    mUseTo->setObjectName(QStringLiteral("chkTo"));
    mTo = new QDateEdit(QDate::currentDate(), this);
    mTo->setObjectName(QStringLiteral("dtTo"));
    mTo->setDisplayFormat(QStringLiteral("M/d/yyyy"));
    for (QWidget *w : {static_cast<QWidget *>(mUseFrom), static_cast<QWidget *>(mFrom), static_cast<QWidget *>(mUseTo),
                       static_cast<QWidget *>(mTo)})
        dates->addWidget(w);
    dates->addStretch();
    filters->addRow(QStringLiteral("Dates (UTC):"), dates);

    mTable = new QTableWidget(this);
    mTable->setObjectName(QStringLiteral("lstEntries"));
    mTable->setColumnCount(11);
    mTable->setHorizontalHeaderLabels(
        {QStringLiteral("Time (UTC)"), QStringLiteral("User"), QStringLiteral("Technician"), QStringLiteral("Host"),
         QStringLiteral("Action"), QStringLiteral("Table"), QStringLiteral("Record"), QStringLiteral("Field"),
         QStringLiteral("Old value"), QStringLiteral("New value"), QStringLiteral("Reason")});
    mTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    mTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    mTable->horizontalHeader()->setStretchLastSection(true);

    auto *buttons = new QHBoxLayout;
    auto *show = new QPushButton(QStringLiteral("&Show"), this);
    show->setObjectName(QStringLiteral("cmdShow"));
    auto *exportButton = new QPushButton(QStringLiteral("&Export CSV..."), this);
    exportButton->setObjectName(QStringLiteral("cmdExport"));
    auto *close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    buttons->addWidget(show);
    buttons->addWidget(exportButton);
    buttons->addStretch();
    buttons->addWidget(close);
    connect(show, &QPushButton::clicked, this, &frmAuditTrail::showRows);
    connect(exportButton, &QPushButton::clicked, this, [this] { exportRows(); });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(mTable, 1);
    layout->addLayout(buttons);

    chooseExportPath = [this] {
        return QFileDialog::getSaveFileName(this, QStringLiteral("Export the Audit Trail"),
                                            QDir(mFolder.documentsDir()).filePath(QStringLiteral("Audit trail.csv")),
                                            QStringLiteral("CSV files (*.csv)"));
    };
    showRows();
}

QComboBox *frmAuditTrail::valueCombo(const QString &objectName, const QString &column)
{
    auto *combo = new QComboBox(this);
    combo->setObjectName(objectName);
    combo->addItem(kAll);
    try {
        const DbConnection db = openDatabase(mFolder);
        combo->addItems(AuditQuery::distinct(db, column));
    } catch (const std::exception &e) {
        mPrompt.message(QStringLiteral("The audit trail could not be read.\r\n\r\n") + QString::fromUtf8(e.what()),
                        kTitle, MsgIcon::Critical);
    }
    return combo;
}

AuditFilter frmAuditTrail::filter() const
{
    AuditFilter filter;
    const auto id = [this](QLineEdit *edit, const QString &what, std::optional<qint64> &into) {
        const QString text = edit->text().trimmed();
        if (text.isEmpty())
            return true;
        bool ok = false;
        const qint64 value = text.toLongLong(&ok);
        if (!ok || value < 1) {
            mPrompt.message(QStringLiteral("The %1 must be a whole number from 1 up.").arg(what), kTitle,
                            MsgIcon::Exclamation);
            return false;
        }
        into = value;
        return true;
    };
    if (!id(mRunID, QStringLiteral("run id"), filter.runID) ||
        !id(mPlateID, QStringLiteral("plate id"), filter.plateID))
        throw std::invalid_argument("bad filter");
    const auto text = [](QComboBox *combo) { return combo->currentIndex() > 0 ? combo->currentText() : QString(); };
    filter.osUser = text(mUser);
    filter.technician = text(mTechnician);
    filter.action = text(mAction);
    if (mUseFrom->isChecked())
        filter.from = mFrom->date();
    if (mUseTo->isChecked())
        filter.to = mTo->date();
    return filter;
}

void frmAuditTrail::showRows()
{
    AuditFilter wanted;
    try {
        wanted = filter();
    } catch (const std::invalid_argument &) {
        return; // told; the list stays as it was
    }
    try {
        const DbConnection db = openDatabase(mFolder);
        mRows = AuditQuery::rows(db, wanted);
    } catch (const std::exception &e) {
        mPrompt.message(QStringLiteral("The audit trail could not be read.\r\n\r\n") + QString::fromUtf8(e.what()),
                        kTitle, MsgIcon::Critical);
        return;
    }
    mTable->setRowCount(int(mRows.size()));
    for (int r = 0; r < mRows.size(); ++r) {
        const AuditRow &row = mRows[r];
        const QStringList cells = {row.time,     row.osUser, row.technician, row.host,     row.action, row.table,
                                   row.recordID, row.field,  row.oldValue,   row.newValue, row.reason};
        for (int c = 0; c < cells.size(); ++c)
            mTable->setItem(r, c, new QTableWidgetItem(cells[c]));
    }
}

bool frmAuditTrail::exportRows()
{
    const QString path = chooseExportPath ? chooseExportPath() : QString();
    if (path.isEmpty())
        return false;
    QString error;
    if (!SafeFile::writeWhole(path, AuditQuery::csv(mRows).toUtf8(), &error)) {
        mPrompt.message(QStringLiteral("The audit trail could not be written to ") + path +
                            QStringLiteral(".\r\n\r\n") + error,
                        kTitle, MsgIcon::Critical);
        return false;
    }
    mPrompt.message(
        QStringLiteral("%1 entries were written to %2.").arg(mRows.size()).arg(QDir::toNativeSeparators(path)), kTitle,
        MsgIcon::Information);
    return true;
}
