#pragma once

#include <QCoreApplication>
#include <QString>

#include <memory>

namespace marlet {
struct SalesSummary;
}

namespace marlet::host {

// The application a picture is drawn under: the painter's fonts need a GUI application, which
// draws off screen when no display is present.
std::unique_ptr<QCoreApplication> pictureApplication(int& argc, char** argv);

// A PNG bar chart of the money taken per day, drawn with Qt's painter. False with error set when
// the file cannot be written.
bool writeSalesChart(const SalesSummary& summary, const QString& file, QString& error);

} // namespace marlet::host
