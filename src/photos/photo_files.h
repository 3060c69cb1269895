// The routines of a person's photograph file: folder + "\" + identifier + ".jpg".
#pragma once

#include <string>

#include "platform/toolkit/controls/control.h"

namespace dossierkit {

// The path of a person's photograph, whether it exists or not.
std::string PhotoFilePath(const std::string& photoPath, const std::string& personID);

// True if the file exists; every failure gives False.
bool PhotoFileExists(const std::string& path);

// Shows the picture in the image "imgPerson" if its file exists; else leaves what was there. Throws
// where the file is no picture.
void ShowPhotoInImage(toolkit::Control& control, const std::string& path);

// Deletes the photograph if there is one. A failure is shown in a message box and forgotten.
void DeletePhotoFile(const std::string& personID, const std::string& photoPath);

}  // namespace dossierkit
