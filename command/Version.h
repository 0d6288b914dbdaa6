// The product's version.
#pragma once

// As in 1.2.3; from the one version of the project.
extern const char productVersion[];
