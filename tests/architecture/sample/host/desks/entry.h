// What is typed.
#pragma once
