/// @file
/// See QuietOutput.h.

#include "reading/occ/QuietOutput.h"

#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <iostream>

namespace kesview {

QuietOutput::QuietOutput() : _buffer(std::cout.rdbuf(nullptr)) {
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
}

QuietOutput::~QuietOutput() {
    std::cout.rdbuf(_buffer);
}

}  // namespace kesview
