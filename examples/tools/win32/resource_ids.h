// Numbers of the windows and of what they hold; read by the resource compiler too.
#pragma once

#define TOOL_TRANSFER 100
#define TOOL_PROPERTIES 101
#define TOOL_SAMPLES 102

#define TOOL_ACTIVITY 1000
#define TOOL_PROGRESS 1001

#define TOOL_PORT_LABEL 1010
#define TOOL_PORT 1011
#define TOOL_SITE_LABEL 1012
#define TOOL_SITE 1013
#define TOOL_INTERVAL_LABEL 1014
#define TOOL_INTERVAL 1015
#define TOOL_INTERVAL_ARROWS 1016

#define TOOL_FILES_LABEL 1020
#define TOOL_FILES 1021
