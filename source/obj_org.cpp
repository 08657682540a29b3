#include "source/obj_org.h"

#include <ostream>

#include "source/body_scanner.h"
#include "source/declaration_scanner.h"

namespace snipwell {

ObjOrg::ObjOrg(const Position& start, int id)
    : ID(id),
      Start(start),
      End(start),
      EndHeader(start),
      StartBody(start),
      EndBody(start),
      Current(start) {}

template <typename Scanner>
void ObjOrg::ScanWith(TextReader& input, Position& position) {
  Current = position;
  Scanner(input, *this, Current).Run();
  End = Current.Previous();
  position = Current;
}

void ObjOrg::ScanDeclarations(int /*language*/, TextReader& input, Position& position) {
  ScanWith<DeclarationScanner>(input, position);
}

void ObjOrg::ScanBody(int /*language*/, TextReader& input, Position& position) {
  ScanWith<BodyScanner>(input, position);
}

void ObjOrg::Dump(std::ostream& out) const {
  out << "*******" << std::endl << "ID: " << ID << std::endl;
  out << "Start: " << Start << "StartParen: " << StartParen << "EndParen: " << EndParen
      << "EndHeader: " << EndHeader << "StartBody: " << StartBody << "EndBody: " << EndBody
      << "End: " << End;
  out << "Type: " << Type << "  Status: " << Status << "  Block: " << static_cast<int>(Block)
      << "  Error: " << static_cast<int>(Error) << "  Is Used: " << static_cast<int>(IsUsed)
      << std::endl;
  if (Child != nullptr) out << "Child: " << Child->ID << std::endl;
  if (Next != nullptr) out << "Next: " << Next->ID << std::endl;
}

}  // namespace snipwell
