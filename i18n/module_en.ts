<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>CMorvaneHandleGraph</name>
    <message>
        <source>保护设置</source>
        <translation>Relay Settings</translation>
    </message>
    <message>
        <source>显示设置</source>
        <translation>Display Settings</translation>
    </message>
</context>
<context>
    <name>CMorvaneObject</name>
    <message>
        <source>保护编辑</source>
        <translation>Relay editing</translation>
    </message>
    <message>
        <source>保护整定</source>
        <translation>Setting calculation</translation>
    </message>
    <message>
        <source>读 RTDB.nm 失败</source>
        <translation>RTDB.nm cannot be read</translation>
    </message>
    <message>
        <source>切换网络失败，实时库中的网络不完整，请重新选择作业</source>
        <translation>The network could not be switched and is incomplete in the real-time database; select the case again</translation>
    </message>
</context>
<context>
    <name>Text</name>
    <message>
        <source>虚拟保护</source>
        <translation>Virtual relay</translation>
    </message>
    <message>
        <source>普通节点上不能装设保护</source>
        <translation>No relay can be installed at an ordinary node</translation>
    </message>
    <message>
        <source>只有在仅有一条物理母线与该母线对应时，才能从单线图上为该母线装设保护</source>
        <translation>Relays can be installed at this bus from the single-line diagram only when exactly one physical bus belongs to it</translation>
    </message>
    <message>
        <source>元件数据有误，不能启动保护装设对话框</source>
        <translation>The data of the element are faulty; the relay dialog cannot be opened</translation>
    </message>
    <message>
        <source>  %1的配合关系:</source>
        <translation>  Coordination of %1:</translation>
    </message>
    <message>
        <source>    %1段与以下保护配合:  </source>
        <translation>    Stage %1 coordinates with:  </translation>
    </message>
    <message>
        <source>      %1  %2  %3段  </source>
        <translation>      %1  %2  stage %3  </translation>
    </message>
    <message>
        <source>定值名不能为空</source>
        <translation>A setting name must not be empty</translation>
    </message>
    <message>
        <source>定值名%1不能保存: %2</source>
        <translation>The setting name %1 cannot be stored: %2</translation>
    </message>
</context>
<context>
    <name>WinDlgDefineDspDz</name>
    <message>
        <source>定值名定义</source>
        <translation>Setting Names</translation>
    </message>
    <message>
        <source>保护类型:</source>
        <translation>Relay type:</translation>
    </message>
    <message>
        <source>原定值名</source>
        <translation>Present name</translation>
    </message>
    <message>
        <source>新定值名</source>
        <translation>New name</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>WinDlgDspRly</name>
    <message>
        <source>保护类型选择</source>
        <translation>Relay Type</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>All</translation>
    </message>
</context>
<context>
    <name>WinDlgLogIn</name>
    <message>
        <source>继电保护模块用户登录</source>
        <translation>Relay Protection Login</translation>
    </message>
    <message>
        <source>请输入密码:</source>
        <translation>Password:</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>密码错误</source>
        <translation>Wrong password</translation>
    </message>
</context>
<context>
    <name>WinDlgSetDsp</name>
    <message>
        <source>保护显示配置</source>
        <translation>Relay Display</translation>
    </message>
    <message>
        <source>保护配置</source>
        <translation>Relay types</translation>
    </message>
    <message>
        <source>保护定值</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>不显示</source>
        <translation>None</translation>
    </message>
    <message>
        <source>提示保护配合</source>
        <translation>Tell coordination</translation>
    </message>
    <message>
        <source>显示保护类型</source>
        <translation>Show relay type</translation>
    </message>
    <message>
        <source>保护类型</source>
        <translation>Relay type</translation>
    </message>
    <message>
        <source>保护显示顺序</source>
        <translation>Order</translation>
    </message>
    <message>
        <source>定值名称</source>
        <translation>Setting</translation>
    </message>
    <message>
        <source>定值显示顺序</source>
        <translation>Order</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>WinDlgSetUser</name>
    <message>
        <source>用户管理</source>
        <translation>User</translation>
    </message>
    <message>
        <source>原密码</source>
        <translation>Old password</translation>
    </message>
    <message>
        <source>新密码:</source>
        <translation>New password:</translation>
    </message>
    <message>
        <source>确认密码:</source>
        <translation>Confirm password:</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>原密码错误，不能修改密码</source>
        <translation>The old password is wrong; the password was not changed</translation>
    </message>
    <message>
        <source>密码长度应为6位，或不填</source>
        <translation>The password must have 6 characters or be empty</translation>
    </message>
    <message>
        <source>新密码与确认密码不同</source>
        <translation>New password and confirmation differ</translation>
    </message>
    <message>
        <source>密码末尾不能有空格，也不能有GBK字符集以外的字符</source>
        <translation>The password must not end in a blank or hold characters outside GBK</translation>
    </message>
    <message>
        <source>不能保存密码</source>
        <translation>The password could not be stored</translation>
    </message>
</context>
</TS>
