// The desktop headers ask for this one, for the sake of x86 vector types.
#pragma once
