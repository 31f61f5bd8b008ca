#pragma once

#include <QString>

namespace marlet {

class Form;
class Session;

// The picture commands of a member form (the record screen and the member page): "Add Picture"
// shows the method frame, whose buttons load a file, run the scanner front end, choose the image
// source, blank the picture or cancel. The picture stays on the form until a save writes it.
class MemberPicture
{
public:
    MemberPicture(Session& session, Form& form);

    void addPicture();
    void fromFile();
    void scanner();
    void selectImageSource();
    void blankImage();
    void cancel();

    // The scanner front end in the server folder, which leaves its image on the clipboard.
    static QString scannerProgram(const QString& serverFolder);

private:
    void showPictureFrame();

    Session& m_session;
    Form& m_form;
};

} // namespace marlet
