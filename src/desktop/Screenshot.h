#pragma once

#include <QString>

namespace marlet {

class Form;

// Shows the loaded form as its window would look and saves a picture of it as
// "<folder>/<form name>.png" (or the given file name). Returns the file written, or an empty
// text when the picture could not be saved.
QString saveScreenshot(Form& form, const QString& folder, const QString& fileName = QString());

} // namespace marlet
