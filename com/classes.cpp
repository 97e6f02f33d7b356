#include "com/classes.h"

#include <algorithm>
#include <array>

#include "credentials/cls_credential.h"
#include "dircodes/cls_dir_code.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"

namespace qorcred::com {

namespace {

template <typename Class>
std::shared_ptr<Controller> Create(Host& host) {
  return std::make_shared<Class>(host);
}

const std::array kClasses{
    ComClass{{0x0d5b98bd, 0xb7da, 0x4381, {0x90, 0xfb, 0x09, 0xb3, 0xc4, 0x03, 0x61, 0xcc}},
             {0xa92ad42f, 0xf836, 0x4150, {0x9b, 0x79, 0xc7, 0x85, 0xc9, 0x8a, 0x1d, 0xb4}},
             L"clsCredential",
             L"qorCred.clsCredential",
             L"Controller of the credential screen",
             clsCredential::MemberTable,
             Create<clsCredential>},
    ComClass{{0x27263ee8, 0x0ac4, 0x479e, {0xad, 0xfa, 0xc7, 0x3e, 0xac, 0xe5, 0xc9, 0xef}},
             {0xf4a13986, 0xe4a3, 0x47ed, {0xbc, 0x91, 0xc4, 0x99, 0xeb, 0x22, 0xe1, 0xbf}},
             L"clsDirCode",
             L"qorCred.clsDirCode",
             L"Controller of the directory-code screen",
             clsDirCode::MemberTable,
             Create<clsDirCode>},
    ComClass{{0x94f4bccb, 0x3e4f, 0x4739, {0x87, 0x44, 0x42, 0x93, 0xa6, 0xd2, 0xe2, 0x8a}},
             {0xde658116, 0x4341, 0x4caa, {0x9f, 0x34, 0x04, 0x20, 0xc1, 0x1b, 0xdc, 0xc0}},
             L"clsDirCodeReport",
             L"qorCred.clsDirCodeReport",
             L"Controller of the directory-code report screen",
             clsDirCodeReport::MemberTable,
             Create<clsDirCodeReport>},
    ComClass{{0x186411d4, 0x3819, 0x4472, {0x98, 0x94, 0xe6, 0xc6, 0x99, 0x44, 0x88, 0x0d}},
             {0x3e1e7847, 0x16a4, 0x4c61, {0x9b, 0x60, 0xbb, 0x05, 0xf7, 0xc5, 0x9b, 0xe7}},
             L"clsCredentialReport",
             L"qorCred.clsCredentialReport",
             L"Controller of the credential report screen",
             clsCredentialReport::MemberTable,
             Create<clsCredentialReport>},
};

}  // namespace

const GUID kTypeLibrary = {
    0x15454b9d, 0xf853, 0x42c9, {0x81, 0xe6, 0x22, 0x64, 0xaa, 0xcd, 0x34, 0xe3}};

std::span<const ComClass> Classes() {
  return kClasses;
}

const ComClass* FindClass(REFCLSID id) {
  const auto found = std::find_if(kClasses.begin(), kClasses.end(),
                                  [&id](const ComClass& one) { return IsEqualCLSID(one.id, id); });
  return found == kClasses.end() ? nullptr : &*found;
}

}  // namespace qorcred::com
