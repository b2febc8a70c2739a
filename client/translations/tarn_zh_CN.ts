<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>TarnClient::CLiveWall</name>
    <message>
        <source>Double-click a plan to play it</source>
        <translation>双击预案即可播放</translation>
    </message>
    <message>
        <source>Live view</source>
        <translation>实时预览</translation>
    </message>
</context>
<context>
    <name>TarnClient::CMainWindow</name>
    <message>
        <source>Plans</source>
        <translation>预案</translation>
    </message>
    <message>
        <source>Families of plans</source>
        <translation>预案类别</translation>
    </message>
    <message>
        <source>User: %1</source>
        <translation>用户：%1</translation>
    </message>
    <message>
        <source>Store: %1</source>
        <translation>数据：%1</translation>
    </message>
    <message>
        <source>Public plans</source>
        <translation>公共预案</translation>
    </message>
    <message>
        <source>No public plans yet</source>
        <translation>暂无公共预案</translation>
    </message>
    <message>
        <source>My plans</source>
        <translation>我的预案</translation>
    </message>
    <message>
        <source>You have no plans of your own yet</source>
        <translation>您还没有自己的预案</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWaitPage</name>
    <message>
        <source>Loading the plans...</source>
        <translation>正在加载预案…</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallBar</name>
    <message>
        <source>Previous page</source>
        <translation>上一页</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>左箭头</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>下一页</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>右箭头</translation>
    </message>
    <message>
        <source>Stop the plan</source>
        <translation>停止预案</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>第 %1 页，共 %2 页</translation>
    </message>
    <message>
        <source>held</source>
        <translation>已暂停</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>Go on turning pages</source>
        <translation>继续翻页</translation>
    </message>
    <message>
        <source>Hold this page</source>
        <translation>停留在此页</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>空格</translation>
    </message>
    <message>
        <source>Live view</source>
        <translation>实时预览</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallWindow</name>
    <message>
        <source>Connecting...</source>
        <translation>正在连接…</translation>
    </message>
    <message>
        <source>No camera</source>
        <translation>无摄像机</translation>
    </message>
    <message>
        <source>Window %1: %2, %3</source>
        <translation>窗口 %1：%2，%3</translation>
    </message>
    <message>
        <source>Window %1: no camera</source>
        <translation>窗口 %1：无摄像机</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CStandardPlanModel</name>
    <message>
        <source>Empty</source>
        <translation>空</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CStandardViewController</name>
    <message>
        <source>AddASuccess</source>
        <translation>添加成功</translation>
    </message>
    <message>
        <source>DeleteTheSuccess</source>
        <translation>删除成功</translation>
    </message>
    <message>
        <source>EditSuccess</source>
        <translation>修改成功</translation>
    </message>
    <message>
        <source>SaveSuccessfulYCFI2BGO</source>
        <translation>保存成功</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.84c1323492ea472ca4d571b907908b8e.msg</source>
        <translation>一个预案最多可包含 128 个有摄像机的窗口</translation>
    </message>
</context>
</TS>
