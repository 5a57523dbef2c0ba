// A minimal host: builds the source and filter panel the way the alarm screen
// does, in German from the catalogues installed with the package, presses its
// Apply button and checks the record the panel hands over.
#include <AlarmScreenConfiguration.h>
#include <AlarmScreenTranslations.h>
#include <SourceAndFilter.h>
#include <SourceAndFiltersUi.h>
#include <SourceAndFiltersUiFactory.h>

#include <QApplication>
#include <QPushButton>
#include <QTextStream>
#include <QTimer>

#include <memory>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (!AlarmScreenTranslations::install(QLocale(QLocale::German))) {
        QTextStream(stderr) << "no German catalogues installed\n";
        return 4;
    }
    const AlarmScreenConfiguration config;
    SourceAndFiltersUiFactory factory(&config);
    const std::unique_ptr<SourceAndFiltersUi> panel(factory.create(config, nullptr));
    auto *apply = panel ? panel->findChild<QPushButton *>(QStringLiteral("pushButtonApply")) : nullptr;
    if (!apply) {
        QTextStream(stderr) << "no panel with an Apply button\n";
        return 2;
    }
    if (apply->text() != QStringLiteral("Anwenden")) {
        QTextStream(stderr) << "the panel is not in German: " << apply->text() << '\n';
        return 5;
    }
    QObject::connect(panel.get(), &SourceAndFiltersUi::applyStructuredFilter, &app,
                     [](const SourceAndFilter &filter, int type) {
                         QTextStream(stdout) << "applied: source mode " << int(filter.getSourceMode())
                                             << ", type " << type << '\n';
                         QCoreApplication::exit(filter.getSourceMode() == Constants::SourceModeLive && type == 0
                                                    ? 0
                                                    : 1);
                     });
    panel->show();
    QTimer::singleShot(0, apply, &QPushButton::click);
    QTimer::singleShot(30000, &app, [] {
        QTextStream(stderr) << "the panel never applied\n";
        QCoreApplication::exit(3);
    });
    return QApplication::exec();
}
