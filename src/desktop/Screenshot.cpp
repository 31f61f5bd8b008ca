#include "desktop/Screenshot.h"

#include "desktop/FormDialog.h"
#include "platform/Form.h"

#include <QCoreApplication>
#include <QDir>
#include <QPixmap>

namespace marlet {

QString saveScreenshot(Form& form, const QString& folder, const QString& fileName)
{
    if (!form.isLoaded() || !QDir().mkpath(folder))
        return QString();
    FormDialog dialog(form);
    dialog.show();
    // Let layouts settle and pending grid changes reach their views.
    QCoreApplication::processEvents();
    const QString path = QDir(folder).filePath(fileName.isEmpty() ? form.name() + QStringLiteral(".png") : fileName);
    const bool saved = dialog.grab().save(path, "PNG");
    dialog.hide();
    return saved ? path : QString();
}

} // namespace marlet
