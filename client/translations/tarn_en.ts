<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>TarnClient::CLiveWall</name>
    <message>
        <source>Double-click a plan to play it</source>
        <translation>Double-click a plan to play it</translation>
    </message>
    <message>
        <source>Live view</source>
        <translation>Live view</translation>
    </message>
</context>
<context>
    <name>TarnClient::CMainWindow</name>
    <message>
        <source>Plans</source>
        <translation>Plans</translation>
    </message>
    <message>
        <source>Families of plans</source>
        <translation>Families of plans</translation>
    </message>
    <message>
        <source>User: %1</source>
        <translation>User: %1</translation>
    </message>
    <message>
        <source>Store: %1</source>
        <translation>Store: %1</translation>
    </message>
    <message>
        <source>Public plans</source>
        <translation>Public plans</translation>
    </message>
    <message>
        <source>No public plans yet</source>
        <translation>No public plans yet</translation>
    </message>
    <message>
        <source>My plans</source>
        <translation>My plans</translation>
    </message>
    <message>
        <source>You have no plans of your own yet</source>
        <translation>You have no plans of your own yet</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWaitPage</name>
    <message>
        <source>Loading the plans...</source>
        <translation>Loading the plans…</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallBar</name>
    <message>
        <source>Previous page</source>
        <translation>Previous page</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Next page</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>Stop the plan</source>
        <translation>Stop the plan</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Page %1 of %2</translation>
    </message>
    <message>
        <source>held</source>
        <translation>held</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Go on turning pages</source>
        <translation>Go on turning pages</translation>
    </message>
    <message>
        <source>Hold this page</source>
        <translation>Hold this page</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>Live view</source>
        <translation>Live view</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallWindow</name>
    <message>
        <source>Connecting...</source>
        <translation>Connecting…</translation>
    </message>
    <message>
        <source>No camera</source>
        <translation>No camera</translation>
    </message>
    <message>
        <source>Window %1: %2, %3</source>
        <translation>Window %1: %2, %3</translation>
    </message>
    <message>
        <source>Window %1: no camera</source>
        <translation>Window %1: no camera</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CStandardPlanModel</name>
    <message>
        <source>Empty</source>
        <translation>Empty</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CStandardViewController</name>
    <message>
        <source>AddASuccess</source>
        <translation>Added.</translation>
    </message>
    <message>
        <source>DeleteTheSuccess</source>
        <translation>Deleted.</translation>
    </message>
    <message>
        <source>EditSuccess</source>
        <translation>Changed.</translation>
    </message>
    <message>
        <source>SaveSuccessfulYCFI2BGO</source>
        <translation>Saved.</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.84c1323492ea472ca4d571b907908b8e.msg</source>
        <translation>A plan can hold at most 128 windows with a camera.</translation>
    </message>
</context>
</TS>
