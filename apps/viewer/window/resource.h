// Numbers of resources, commands and controls; read by the resource compiler too.
#pragma once

#define IDI_VIEWER 1
#define IDR_VIEWER 100
#define IDD_SELECT 101

#define IDM_OPEN 1001
#define IDM_PRINT 1002
#define IDM_RELOAD 1003
#define IDM_EXIT 1004
#define IDM_COPY_RESULTS 1010
#define IDM_RESET_VALUES 1011
#define IDM_NEXT_PANE 1020
#define IDM_PREVIOUS_PANE 1021
#define IDM_SELECT 1022
#define IDM_ABOUT 1030
// In the order of the drawings, with the whole page behind them.
#define IDM_COPY_FIRST 1040
#define IDM_COPY_PAGE 1043
#define IDM_SAVE_FIRST 1050
#define IDM_SAVE_PAGE 1053

#define IDC_PRODUCTS_LABEL 201
#define IDC_PRODUCTS 202
#define IDC_SIZES_LABEL 203
#define IDC_SIZES 204
#define IDC_FLOW_LABEL 205
#define IDC_FLOW 206
#define IDC_FLOW_UNIT 207
#define IDC_PRESSURE_LABEL 208
#define IDC_PRESSURE 209
#define IDC_PRESSURE_UNIT 210
#define IDC_FIRST_VALUE_LABEL 211
#define IDC_FIRST_VALUE 212
#define IDC_SECOND_VALUE_LABEL 213
#define IDC_SECOND_VALUE 214
#define IDC_RESULTS_LABEL 215
#define IDC_RESULTS 216
#define IDC_STATUS 217
// In the order of the drawings.
#define IDC_FIRST_CAPTION 220
#define IDC_FIRST_DRAWING 230

// Of the dialog that selects; its button is IDOK.
#define IDC_DUTY_FLOW 301
#define IDC_DUTY_FLOW_UNIT 302
#define IDC_DUTY_PRESSURE 303
#define IDC_DUTY_PRESSURE_UNIT 304
#define IDC_DUTY_LEVEL 305
#define IDC_DUTY_DAMPING 306
#define IDC_DUTY_CLASS 307
#define IDC_DUTY_RANKING 308
#define IDC_DUTY_WANTED 309
#define IDC_DUTY_PRODUCTS 310
#define IDC_DUTY_MESSAGE 311
