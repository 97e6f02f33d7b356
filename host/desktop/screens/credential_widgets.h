// The controls at which the inputs of credentials are entered.
#pragma once

#include <array>

#include "host/desks/credential_fields.h"
#include "host/desktop/screens/screen_page.h"

namespace qorhost {

/// Those of the credential screen and of the tenant-creating screen; each form has its own part.
inline constexpr std::array kCredentialWidgets{
    FieldWidget{credential_field::kType, "cboCredentialType"},
    FieldWidget{credential_field::kFirst, "txtPINStart"},
    FieldWidget{credential_field::kLast, "txtPINEND"},
    FieldWidget{credential_field::kFacility, "txtFacilityCode"},
    FieldWidget{credential_field::kIdCode, "txtIDCode"},
    FieldWidget{credential_field::kSequence, "txtSequenceCode"},
    FieldWidget{credential_field::kButton, "optButton4"},
    FieldWidget{credential_field::kCredential, "cboCredentials"},
    FieldWidget{credential_field::kDoor, "cboActivate"},
    FieldWidget{credential_field::kTenant, "cboAssignedTo"},
    FieldWidget{credential_field::kSchedules, "cboSchedules1"},
    FieldWidget{credential_field::kStart, "dtpStart"},
    FieldWidget{credential_field::kEnd, "dtpEnd"}};

}  // namespace qorhost
