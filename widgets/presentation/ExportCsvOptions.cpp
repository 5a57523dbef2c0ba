#include "ExportCsvOptions.h"

#include "ui_DialogCsvOptions.h"

#include <QPushButton>

bool ExportCsvOptions::getOptions(const QString &separator, bool hasSelection, QWidget *parent)
{
    QDialog dialog(parent);
    Ui::DialogCsvOptions ui;
    ui.setupUi(&dialog);
    ui.radioButtonSelectedRows->setEnabled(hasSelection);
    (m_allRows || !hasSelection ? ui.radioButtonAllRows : ui.radioButtonSelectedRows)->setChecked(true);
    ui.checkBoxHeader->setChecked(m_header);
    ui.checkBoxGrouping->setChecked(m_grouping);
    ui.lineEditSeparator->setText(separator.isEmpty() ? m_separator : separator);
    // The file format knows one-character separators only.
    QPushButton *ok = ui.buttonBox->button(QDialogButtonBox::Ok);
    auto checkSeparator = [ok](const QString &text) { ok->setEnabled(text.size() == 1); };
    QObject::connect(ui.lineEditSeparator, &QLineEdit::textChanged, ok, checkSeparator);
    checkSeparator(ui.lineEditSeparator->text());

    if (dialog.exec() != QDialog::Accepted)
        return false;
    m_allRows = ui.radioButtonAllRows->isChecked();
    m_header = ui.checkBoxHeader->isChecked();
    m_grouping = ui.checkBoxGrouping->isChecked();
    m_separator = ui.lineEditSeparator->text();
    return true;
}
