// Whether this machine is a domain controller, which is where desktop management belongs.
#pragma once

// True when the product type of this machine is that of a domain controller. One that cannot be read is not.
[[nodiscard]] bool IsDomainController();
