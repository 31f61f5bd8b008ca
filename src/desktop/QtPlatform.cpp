#include "desktop/QtPlatform.h"

#include "desktop/ComponentRegistry.h"
#include "desktop/FormDialog.h"
#include "desktop/InputBoxDialog.h"
#include "desktop/MenuBuilder.h"
#include "desktop/MessageBoxStyle.h"
#include "desktop/QtSerialPort.h"
#include "desktop/Units.h"
#include "desktop/views/ScreenViews.h"
#include "platform/Form.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QColorDialog>
#include <QCursor>
#include <QDesktopServices>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QImage>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QScreen>
#include <QTimer>
#include <QUrl>

namespace marlet {

namespace {

// "Pictures (*.bmp;*.jpg)" without its pattern part: Qt shows the patterns itself.
QString filterDescription(const QString& description)
{
    const QString trimmed = description.trimmed();
    const qsizetype open = trimmed.lastIndexOf(u'(');
    if (open > 0 && trimmed.endsWith(u')'))
        return trimmed.left(open).trimmed();
    return trimmed;
}

} // namespace

QtPlatform::QtPlatform()
{
    registerScreenViews();
}

QWidget* QtPlatform::dialogParent()
{
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

MsgResult QtPlatform::messageBox(const QString& text, int style, const QString& title)
{
    QMessageBox box(dialogParent());
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    applyMessageStyle(box, style);
    box.exec();
    return messageResult(box);
}

QString QtPlatform::inputBox(
    const QString& prompt, const QString& title, const QString& defaultText, std::optional<QPoint> position)
{
    InputBoxDialog dialog(prompt, title, defaultText, dialogParent());
    if (position) {
        // Twips from the screen's top-left corner.
        const QScreen* screen = dialog.screen();
        const QPoint origin = screen ? screen->geometry().topLeft() : QPoint();
        dialog.move(origin + QPoint(pixelsFromTwips(position->x()), pixelsFromTwips(position->y())));
    }
    if (dialog.exec() != QDialog::Accepted)
        return QString();
    return dialog.text();
}

QStringList QtPlatform::nameFilters(const QString& filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts.at(i + 1);
        patterns.replace(u';', u' ');
        filters.append(filterDescription(parts.at(i)) + QStringLiteral(" (") + patterns.trimmed() + u')');
    }
    return filters;
}

std::optional<QString> QtPlatform::fileDialog(const FileDialogRequest& request)
{
    QFileDialog dialog(dialogParent(), request.title, request.initialDir);
    dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    const QStringList filters = nameFilters(request.filter);
    if (!filters.isEmpty())
        dialog.setNameFilters(filters);
    if (!request.fileName.isEmpty())
        dialog.selectFile(request.fileName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
}

std::optional<int> QtPlatform::colorDialog(int initialColor)
{
    const QColor chosen = QColorDialog::getColor(colorFromBgr(initialColor), dialogParent());
    if (!chosen.isValid())
        return std::nullopt;
    return bgrFromColor(chosen);
}

void QtPlatform::showModal(Form& form)
{
    form.load();
    if (!form.isLoaded())
        return;
    FormDialog dialog(form, dialogParent());
    form.activate();
    dialog.runModal();
}

Control* QtPlatform::popupMenu(Form& /*form*/, Control& menu)
{
    QMenu popup(dialogParent());
    popup.setObjectName(menu.key());
    fillMenu(popup, menu, [](Control& item, QAction& action) { action.setData(QVariant::fromValue<void*>(&item)); });
    const QAction* chosen = popup.exec(QCursor::pos());
    return chosen ? static_cast<Control*>(chosen->data().value<void*>()) : nullptr;
}

void QtPlatform::sleep(int milliseconds)
{
    // The window stays responsive while the time passes.
    QEventLoop loop;
    QTimer::singleShot(qMax(milliseconds, 0), &loop, &QEventLoop::quit);
    loop.exec();
}

void QtPlatform::yield()
{
    // Long operations yield after every row. Running the events at most about once a frame keeps
    // the window as responsive (a click on "Stop" waits a few milliseconds at most) without
    // repainting it thousands of times.
    constexpr qint64 FrameMilliseconds = 15;
    if (m_lastYield.isValid() && m_lastYield.elapsed() < FrameMilliseconds)
        return;
    QCoreApplication::processEvents();
    m_lastYield.start();
}

QDateTime QtPlatform::now() const
{
    return QDateTime::currentDateTime();
}

QString QtPlatform::defaultPrinter() const
{
    return QPrinterInfo::defaultPrinterName();
}

QStringList QtPlatform::printers() const
{
    return QPrinterInfo::availablePrinterNames();
}

bool QtPlatform::printLines(const QList<PrintedLine>& lines)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPrinterName(QPrinterInfo::defaultPrinterName());
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    const QRect page = painter.viewport();
    const int flags = Qt::TextExpandTabs | Qt::TextWordWrap;
    int top = 0;
    for (const PrintedLine& line : lines) {
        QFont font = painter.font();
        font.setBold(line.bold);
        font.setPointSize(line.size);
        painter.setFont(font);
        // Row by row, so that a long text goes on over the next page.
        const QStringList rows = QString(line.text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).split(u'\n');
        for (const QString& row : rows) {
            // An empty row still takes the height of one row of its font.
            const QString text = row.isEmpty() ? QStringLiteral(" ") : row;
            const int height = painter.boundingRect(page, flags, text).height();
            if (top > 0 && top + height > page.height()) {
                printer.newPage();
                top = 0;
            }
            painter.drawText(QRect(page.left(), page.top() + top, page.width(), height), flags, text);
            top += height;
        }
    }
    return painter.end();
}

std::unique_ptr<SerialPort> QtPlatform::serialPort()
{
    return std::make_unique<QtSerialPort>();
}

std::unique_ptr<NamedComponent> QtPlatform::createComponent(const QString& progId)
{
    return ComponentRegistry::create(progId);
}

bool QtPlatform::openDocument(const QString& path)
{
    const QUrl url = QUrl::fromUserInput(path, QDir::currentPath(), QUrl::AssumeLocalFile);
    return QDesktopServices::openUrl(url);
}

bool QtPlatform::startProgram(const QString& program, const QStringList& arguments, bool wait)
{
    if (!wait)
        return QProcess::startDetached(program, arguments);
    QProcess process;
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    process.start(program, arguments);
    if (!process.waitForStarted())
        return false;
    // The window stays responsive while the program runs.
    if (process.state() != QProcess::NotRunning)
        loop.exec();
    return true;
}

QByteArray QtPlatform::clipboardImage() const
{
    const QImage image = QGuiApplication::clipboard()->image();
    if (image.isNull())
        return QByteArray();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

void QtPlatform::clearClipboard()
{
    QGuiApplication::clipboard()->clear();
}

// The scanners that SANE knows, as "scanimage -f" lists them; the one chosen becomes the default
// device of the scanner front end, which this process starts.
bool QtPlatform::selectImageSource()
{
    QProcess list;
    list.start(QStringLiteral("scanimage"), {QStringLiteral("-f"), QStringLiteral("%d%n")});
    QStringList devices;
    if (list.waitForFinished(30000) && list.exitStatus() == QProcess::NormalExit)
        devices = QString::fromLocal8Bit(list.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    QWidget* parent = QApplication::activeWindow();
    if (devices.isEmpty()) {
        QMessageBox::information(parent, MessageTitle(), QStringLiteral("No scanner was found on this computer."));
        return false;
    }
    bool chosen = false;
    const QString device = QInputDialog::getItem(
        parent, MessageTitle(), QStringLiteral("Select Image Source"), devices, 0, false, &chosen);
    if (!chosen)
        return false;
    qputenv("SANE_DEFAULT_DEVICE", device.toLocal8Bit());
    return true;
}

} // namespace marlet
