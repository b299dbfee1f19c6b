#pragma once

#include <string>

namespace quorvel::PDFResources {

/// Names each picture once in the list that a page keeps of its pictures: cairo 1.16 names one as often as it is drawn,
/// and the format allows no key twice. The length stays, so that the file's table of offsets holds.
void nameOnce(std::string& pdf);

}  // namespace quorvel::PDFResources
